/// @file
#include "document/DocumentStream.h"

#include "document/CheckDocument.h"
#include "document/DocumentFields.h"

#include <cstring>
#include <stdexcept>
#include <utility>

namespace kesview {

namespace {

constexpr std::uint64_t magic = 0x434F44574549564BULL;
constexpr std::uint32_t version = 1;

/// What is moved as a block of bytes. A bool is not: not every byte is one.
template <typename T>
constexpr bool isPlain = std::is_arithmetic_v<T> && !std::is_same_v<T, bool>;

/// Counts the bytes instead of keeping them.
class CountingOutput {
public:
    void Put(const void*, std::size_t size) { _size += size; }
    std::size_t Size() const { return _size; }

private:
    std::size_t _size = 0;
};

/// Gathers small pieces, passes large ones on as they are.
class SinkOutput {
public:
    explicit SinkOutput(const ByteSink& sink) : _sink(sink) { _gathered.reserve(capacity); }

    void Put(const void* data, std::size_t size) {
        const char* bytes = static_cast<const char*>(data);
        if (_gathered.size() + size > capacity) {
            Flush();
        }
        if (size > capacity) {
            _sink(bytes, size);
        } else {
            _gathered.append(bytes, size);
        }
    }

    void Flush() {
        if (!_gathered.empty()) {
            _sink(_gathered.data(), _gathered.size());
            _gathered.clear();
        }
    }

private:
    static constexpr std::size_t capacity = 64 * 1024;
    const ByteSink& _sink;
    std::string _gathered;
};

/// Writes values of every type that a document is made of.
template <typename Output>
class Writer {
public:
    explicit Writer(Output& output) : _output(output) {}

    template <typename... Values>
    void operator()(const Values&... values) {
        (write(values), ...);
    }

private:
    template <typename T>
    void write(const T& value) {
        if constexpr (std::is_same_v<T, bool>) {
            write(static_cast<std::uint8_t>(value));
        } else if constexpr (std::is_enum_v<T>) {
            write(static_cast<std::underlying_type_t<T>>(value));
        } else if constexpr (isPlain<T>) {
            _output.Put(&value, sizeof value);
        } else {
            visitFields(value, *this);
        }
    }

    void write(const std::string& text) { writeBlock(text); }

    template <typename T>
    void write(const std::vector<T>& values) {
        if constexpr (isPlain<T>) {
            writeBlock(values);
        } else {
            write(static_cast<std::uint64_t>(values.size()));
            for (const T& value : values) {
                write(value);
            }
        }
    }

    template <typename T, std::size_t N>
    void write(const std::array<T, N>& values) {
        for (const T& value : values) {
            write(value);
        }
    }

    template <typename T>
    void write(const std::optional<T>& value) {
        write(value.has_value());
        if (value) {
            write(*value);
        }
    }

    void write(const std::map<std::string, std::string>& entries) {
        write(static_cast<std::uint64_t>(entries.size()));
        for (const auto& [key, value] : entries) {
            write(key);
            write(value);
        }
    }

    template <typename Block>
    void writeBlock(const Block& block) {
        write(static_cast<std::uint64_t>(block.size()));
        _output.Put(block.data(), block.size() * sizeof(typename Block::value_type));
    }

    Output& _output;
};

/// The fewest bytes that a @p T takes, so that no count promises more than the rest can hold.
template <typename T>
std::size_t leastSize() {
    static const std::size_t size = [] {
        CountingOutput output;
        Writer<CountingOutput>{output}(T());
        return output.Size();
    }();
    return size;
}

/// The opposite of Writer, which trusts nothing.
class Reader {
public:
    explicit Reader(std::string_view bytes) : _rest(bytes) {}

    template <typename... Values>
    void operator()(Values&... values) {
        (read(values), ...);
    }

    bool AtEnd() const { return _rest.empty(); }

private:
    template <typename T>
    void read(T& value) {
        if constexpr (std::is_same_v<T, bool>) {
            value = readBelow<std::uint8_t>(1) != 0;
        } else if constexpr (std::is_enum_v<T>) {
            using Number = std::underlying_type_t<T>;
            value = static_cast<T>(readBelow<Number>(static_cast<Number>(lastOf(T()))));
        } else if constexpr (isPlain<T>) {
            take(&value, sizeof value);
        } else {
            visitFields(value, *this);
        }
    }

    void read(std::string& text) {
        text.resize(readCount(1));
        take(text.data(), text.size());
    }

    template <typename T>
    void read(std::vector<T>& values) {
        if constexpr (isPlain<T>) {
            values.resize(readCount(sizeof(T)));
            take(values.data(), values.size() * sizeof(T));
        } else {
            values.resize(readCount(leastSize<T>()));
            for (T& value : values) {
                read(value);
            }
        }
    }

    template <typename T, std::size_t N>
    void read(std::array<T, N>& values) {
        for (T& value : values) {
            read(value);
        }
    }

    template <typename T>
    void read(std::optional<T>& value) {
        bool present = false;
        read(present);
        value.reset();
        if (present) {
            read(value.emplace(T()));
        }
    }

    void read(std::map<std::string, std::string>& entries) {
        const std::size_t count = readCount(2 * leastSize<std::string>());
        for (std::size_t i = 0; i < count; ++i) {
            std::string key;
            std::string value;
            read(key);
            read(value);
            if (!entries.emplace(std::move(key), std::move(value)).second) {
                throw std::runtime_error("The document's stream names an attribute twice.");
            }
        }
    }

    template <typename Number>
    Number readBelow(Number last) {
        Number number = 0;
        read(number);
        if (number < 0 || number > last) {
            throw std::runtime_error("The document's stream holds a value out of its range.");
        }
        return number;
    }

    std::size_t readCount(std::size_t leastSizeOfOne) {
        std::uint64_t count = 0;
        read(count);
        if (count > _rest.size() / leastSizeOfOne) {
            throw std::runtime_error("The document's stream promises more than it holds.");
        }
        return static_cast<std::size_t>(count);
    }

    void take(void* target, std::size_t size) {
        if (size > _rest.size()) {
            throw std::runtime_error("The document's stream ends too early.");
        }
        if (size > 0) {
            std::memcpy(target, _rest.data(), size);
            _rest.remove_prefix(size);
        }
    }

    std::string_view _rest;
};

template <typename Output>
void writeAll(const Document& document, Output& output) {
    Writer<Output>{output}(magic, version, document);
}

}  // namespace

std::size_t streamSize(const Document& document) {
    CountingOutput output;
    writeAll(document, output);
    return output.Size();
}

void writeDocument(const Document& document, const ByteSink& sink) {
    SinkOutput output(sink);
    writeAll(document, output);
    output.Flush();
}

std::string toBytes(const Document& document) {
    std::string bytes;
    bytes.reserve(streamSize(document));
    writeDocument(document,
                  [&bytes](const char* data, std::size_t size) { bytes.append(data, size); });
    return bytes;
}

Document readDocument(std::string_view bytes) {
    Reader reader(bytes);
    std::uint64_t foundMagic = 0;
    std::uint32_t foundVersion = 0;
    reader(foundMagic, foundVersion);
    if (foundMagic != magic) {
        throw std::runtime_error("The stream is not a document's.");
    }
    if (foundVersion != version) {
        throw std::runtime_error("The document's stream is of version " +
                                 std::to_string(foundVersion) + ", not " + std::to_string(version) +
                                 ".");
    }
    Document document;
    reader(document);
    if (!reader.AtEnd()) {
        throw std::runtime_error("The document's stream goes on after the document.");
    }
    checkDocument(document);
    return document;
}

}  // namespace kesview
