/// @file
/// A reader that reads nothing: the name of the file tells it how to behave.

#include "document/DocumentStream.h"
#include "reading/Frames.h"
#include "reading/ReaderArguments.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <new>
#include <string>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>
#include <vector>

namespace {

using kesview::Document;
using kesview::FrameWriter;
using kesview::ReadFailure;

FrameWriter answer(kesview::frameDescriptor);

Document namedDocument(const std::string& author) {
    Document document;
    document.format = "STEP";
    document.author = author;
    return document;
}

void sendRaw(const std::string& bytes) {
    for (std::size_t sent = 0; sent < bytes.size();) {
        const ssize_t count =
            ::write(kesview::frameDescriptor, bytes.data() + sent, bytes.size() - sent);
        if (count <= 0) {
            std::exit(1);
        }
        sent += static_cast<std::size_t>(count);
    }
}

/// Header and content of a document's frame, of which @p cut bytes are missing at the end.
void sendPart(std::size_t cut) {
    const std::string bytes = kesview::toBytes(namedDocument("half"));
    const kesview::FrameHeader header{0x4D52464BU, 3, bytes.size()};
    sendRaw(std::string(reinterpret_cast<const char*>(&header), sizeof header) +
            bytes.substr(0, bytes.size() - cut));
}

void sleepForGood() {
    while (true) {
        ::pause();
    }
}

/// A memory checker, where there is one, would catch the signal and end in its own way.
void dieOfSegmentFault() {
    ::signal(SIGSEGV, SIG_DFL);
    ::raise(SIGSEGV);
}

void crash() {
    std::fputs("about to follow a wild pointer\n", stderr);
    dieOfSegmentFault();
}

/// Writes to every page, as a reader would.
void eatMemory() {
    std::vector<char*> kept;
    while (true) {
        constexpr std::size_t size = 1 << 20;
        kept.push_back(new char[size]);
        for (std::size_t i = 0; i < size; i += 4096) {
            kept.back()[i] = 1;
        }
    }
}

/// As C libraries do: no exception, but a crash on the null that they got.
void eatMemoryAndCrash() {
    try {
        eatMemory();
    } catch (const std::bad_alloc&) {
        dieOfSegmentFault();
    }
}

void eatMemoryAndTell() {
    try {
        eatMemory();
    } catch (const std::bad_alloc&) {
        answer.WriteFailure(ReadFailure::LimitReached, "No memory is left, said the reader.");
    }
}

void answerWithNoise() {
    for (int line = 0; line < 20'000; ++line) {
        std::printf("Line %d on the standard output\n", line);
        std::fprintf(stderr, "Line %d on the standard error\n", line);
    }
    std::fflush(stdout);
    answer.WriteDocument(namedDocument("noisy"));
}

void answerWithProgress() {
    answer.WriteProgress("reading", 0);
    answer.WriteProgress("reading", 0.5);
    answer.WriteProgress("meshing", 7);
    answer.WriteDocument(namedDocument("good"));
}

/// 100 MB of points.
Document largeDocument() {
    Document document = namedDocument("large");
    document.products.resize(1);
    document.products[0].bodies.resize(1);
    document.products[0].bodies[0].points.assign(25'000'002, 1.5F);
    return document;
}

/// Interrupts whoever waits for it while that takes the document apart.
void answerAndInterrupt() {
    const std::string bytes = kesview::toBytes(largeDocument());
    const kesview::FrameHeader header{0x4D52464BU, 3, bytes.size()};
    sendRaw(std::string(reinterpret_cast<const char*>(&header), sizeof header));
    sendRaw(bytes.substr(0, bytes.size() - 1));
    ::usleep(100'000);  // until it waits for the last byte alone
    sendRaw(bytes.substr(bytes.size() - 1));
    ::usleep(2'000);
    ::kill(::getppid(), SIGINT);
}

/// Tells of its surroundings, as findings.
void answerWithFacts() {
    Document document = namedDocument("facts");
    const auto add = [&document](const std::string& code, const std::string& value) {
        document.findings.push_back({kesview::Finding::Severity::Note, code, value, "", 1});
    };
    rlimit limit = {};
    ::getrlimit(RLIMIT_CORE, &limit);
    add("core", std::to_string(limit.rlim_cur));
    ::getrlimit(RLIMIT_AS, &limit);
    add("memory", std::to_string(limit.rlim_cur));
    add("group", ::getpgrp() == ::getpid() ? "own" : "another's");
    char byte = 0;
    add("input", ::read(STDIN_FILENO, &byte, 1) == 0 ? "nothing" : "something");
    std::string open;
    for (int descriptor = 0; descriptor < 64; ++descriptor) {
        open += ::lseek(descriptor, 0, SEEK_CUR) >= 0 || errno != EBADF
                    ? std::to_string(descriptor) + " "
                    : "";
    }
    add("descriptors", open);
    answer.WriteDocument(document);
}

/// Leaves its process id beside the file, then sleeps.
void leaveIdAndSleep(const std::string& path) {
    answer.WriteProgress("sleeping", 0.1);
    std::ofstream(path + ".id.part") << ::getpid() << std::flush;
    std::filesystem::rename(path + ".id.part", path + ".id");
    sleepForGood();
}

/// Leaves its processes' ids beside the file: its own and that of a helper that holds its pipes.
void startHelperAndCrash(const std::string& path) {
    const pid_t helper = ::fork();
    if (helper == 0) {
        sleepForGood();
    }
    std::ofstream(path + ".id") << helper << std::flush;
    dieOfSegmentFault();
}

}  // namespace

int main(int count, char** words) {
    const kesview::ReaderArguments given =
        kesview::fromCommandLine(std::vector<std::string>(words + 1, words + count));
    const std::map<std::string, std::function<void()>> behaviours = {
        {"good", answerWithProgress},
        {"noise", answerWithNoise},
        {"large", [] { answer.WriteDocument(largeDocument()); }},
        {"interrupting", answerAndInterrupt},
        {"facts", answerWithFacts},
        {"crash", crash},
        {"abort", std::abort},
        {"killed", [] { ::raise(SIGKILL); }},
        {"hang", sleepForGood},
        {"closed", [] { ::close(kesview::frameDescriptor), sleepForGood(); }},
        {"spin",
         [] {
             for (volatile int i = 0;; i = i + 1) {
             }
         }},
        {"chatter",
         [] {
             while (true)
                 answer.WriteProgress("still reading", 0.5);
         }},
        {"eat", eatMemory},
        {"eatcrash", eatMemoryAndCrash},
        {"eattell", eatMemoryAndTell},
        {"half", [] { sendPart(5); }},
        {"halfheader", [] { sendRaw("KFR"); }},
        {"halfcrash", [] { sendPart(5), crash(); }},
        {"garbage", [] { sendRaw(std::string(100'000, 'g')); }},
        {"unsound",
         [] {
             Document document;
             document.roots.resize(1);
             answer.WriteDocument(document);
         }},
        {"silent", [] {}},
        {"status", [] { std::exit(3); }},
        {"damaged", [] { answer.WriteFailure(ReadFailure::Damaged, "No solid in 'x'."); }},
        {"late", [] { answer.WriteDocument(namedDocument("late")), crash(); }},
        {"sleep", [&given] { leaveIdAndSleep(given.path); }},
        {"helper", [&given] { startHelperAndCrash(given.path); }},
    };
    behaviours.at(std::filesystem::path(given.path).stem().string())();
    return 0;
}
