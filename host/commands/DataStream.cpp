#include "commands/DataStream.h"

#include <cerrno>
#include <unistd.h>

namespace kesview {

DescriptorBuffer::DescriptorBuffer(int descriptor) : _descriptor(descriptor) {
    setp(_bytes.data(), _bytes.data() + _bytes.size());
}

DescriptorBuffer::~DescriptorBuffer() {
    DescriptorBuffer::sync();  // this one, whatever is derived
}

DescriptorBuffer::int_type DescriptorBuffer::overflow(int_type character) {
    if (sync() != 0) {
        return traits_type::eof();
    }
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        sputc(traits_type::to_char_type(character));
    }
    return traits_type::not_eof(character);
}

int DescriptorBuffer::sync() {
    const char* at = pbase();
    while (_failure == 0 && at != pptr()) {
        const ssize_t written = ::write(_descriptor, at, static_cast<std::size_t>(pptr() - at));
        if (written >= 0) {
            at += written;
        } else if (errno != EINTR) {
            _failure = errno;
        }
    }
    setp(_bytes.data(), _bytes.data() + _bytes.size());
    return _failure == 0 ? 0 : -1;
}

}  // namespace kesview
