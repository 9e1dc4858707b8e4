// A long life: rounds of build, pick, edit, clear and destroy, in which the memory of the process
// must not grow after the first ten. First with the host loaded once, then with the host, and the
// library with it, loaded and unloaded in each round.
//
//     session_long_life MODULE LIBRARY [rounds]
//
// MODULE is LongLifeHost.cpp, linked to LIBRARY, to which this program is not. It is C++ by intent:
// with the run-time library of C++ as part of the module, nothing would be unloaded.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <malloc.h>
#include <string>
#include <unistd.h>

namespace {

using Round = int (*)(std::uint64_t);

constexpr std::uint64_t kSettled = 10;
constexpr std::size_t kAllowedResident = 256 * 1024;
constexpr std::size_t kAllowedHeap = 16 * 1024;  // malloc counts what it keeps for the next caller

[[noreturn]] void fail(const char* what, std::uint64_t round) {
    std::fprintf(stderr, "round %llu: %s\n", static_cast<unsigned long long>(round), what);
    std::exit(1);
}

struct Memory {
    std::size_t heap;      ///< bytes that are allocated
    std::size_t resident;  ///< bytes of the process in memory
};

Memory memoryNow() {
    std::size_t pages = 0;
    std::size_t resident = 0;
    std::FILE* const file = std::fopen("/proc/self/statm", "r");
    if (file == nullptr || std::fscanf(file, "%zu %zu", &pages, &resident) != 2) {
        fail("the size of the process cannot be read", 0);
    }
    std::fclose(file);
    return {mallinfo2().uordblks, resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE))};
}

void* load(const char* module) {
    void* const handle = dlopen(module, RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        fail(dlerror(), 0);
    }
    return handle;
}

void live(void* module, std::uint64_t round) {
    const auto liveOneRound = reinterpret_cast<Round>(dlsym(module, "liveOneRound"));
    if (liveOneRound == nullptr || liveOneRound(round) != 1) {
        fail("something went wrong", round);
    }
}

/// Runs the rounds by @p oneRound, and fails where after the first ten the heap grows by more than
/// @p lostARound bytes in each, or heap or process by more than a few pages in all.
template <typename OneRound>
void checkRounds(const char* what, std::uint64_t rounds, std::size_t lostARound,
                 const OneRound& oneRound) {
    Memory settled{};
    for (std::uint64_t round = 1; round <= rounds; ++round) {
        oneRound(round);
        if (round == kSettled) {
            settled = memoryNow();
        }
    }
    const Memory end = memoryNow();
    std::printf("%s: heap %zu bytes after %llu rounds, %zu after %llu; resident %zu KB, %zu KB\n",
                what, settled.heap, static_cast<unsigned long long>(kSettled), end.heap,
                static_cast<unsigned long long>(rounds), settled.resident / 1024,
                end.resident / 1024);
    if (end.heap > settled.heap + kAllowedHeap + lostARound * (rounds - kSettled)) {
        fail("the heap has grown", rounds);
    }
    if (end.resident > settled.resident + kAllowedResident) {
        fail("the process has grown", rounds);
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 3) {
        std::fprintf(stderr, "session_long_life MODULE LIBRARY [rounds]\n");
        return 2;
    }
    const std::string path = arguments[1];
    const std::string library = arguments[2];
    const std::uint64_t rounds = count > 3 ? std::strtoull(arguments[3], nullptr, 10) : 1000;
    if (rounds <= kSettled) {
        fail("more rounds than ten are needed", rounds);
    }

    void* const kept = load(path.c_str());
    checkRounds("library kept", rounds, 0, [kept](std::uint64_t round) { live(kept, round); });
    dlclose(kept);

    // The instance of VizFactories is never destroyed: one block of 24 bytes for each loading,
    // which takes 32 of the heap.
    checkRounds("library unloaded", rounds, 32, [&path, &library](std::uint64_t round) {
        void* const module = load(path.c_str());
        live(module, round);
        dlclose(module);
        // cppcheck-suppress leakReturnValNotUsed ; where there is a handle the program ends
        if (dlopen(library.c_str(), RTLD_LAZY | RTLD_NOLOAD) != nullptr) {
            fail("the library is still loaded", round);
        }
    });
    return 0;
}
