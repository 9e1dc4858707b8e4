#pragma once

/// @file
/// Sessions of which every operation is run with each of its allocations failing.

#include "core/OutOfMemory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <functional>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore::support {

/// What an operation may leave behind where memory ran out in it.
enum class Afterwards {
    Unchanged,  ///< everything is as before
    Begun,      ///< a part is done, and the same call again does the rest
    Untold      ///< as Begun, and the answer, which is fixed, does not tell that memory ran out
};

/// One operation of a session.
struct Step {
    std::string name;
    /// True where the answer is that of an operation that had all the memory it wanted. It may
    /// throw std::bad_alloc.
    std::function<bool()> run;
    Afterwards afterwards = Afterwards::Unchanged;
};

/// What a host does, one operation after the other, and a text of all that these could change.
/// Sessions of one class are alike: each step allocates as often in one as in the other.
class Session {
public:
    Session() = default;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    virtual ~Session() = default;

    /// Everything that the steps build.
    virtual std::string State() = 0;
    /// What must be as before wherever a step failed, also one that has begun: what is open.
    virtual std::string Position() { return {}; }

    const std::vector<Step>& Steps() const { return _steps; }

protected:
    void add(std::string name, std::function<bool()> run) {
        _steps.push_back({std::move(name), std::move(run)});
    }
    /// A step that may be done in part where memory runs out.
    void addBegun(std::string name, std::function<bool()> run) {
        _steps.push_back({std::move(name), std::move(run), Afterwards::Begun});
    }
    /// A step whose answer is always the same.
    void addUntold(std::string name, std::function<bool()> run) {
        _steps.push_back({std::move(name), std::move(run), Afterwards::Untold});
    }

private:
    std::vector<Step> _steps;
};

/// How a step went.
struct Outcome {
    bool done = false;
    bool failed = false;  ///< whether the allocation that was to fail was asked for
    long allocations = 0;
};

/// Runs @p step with its @p failing -th allocation failing, or none for 0.
inline Outcome runStep(const Step& step, long failing) {
    Outcome outcome;
    OutOfMemory outOfMemory(failing);
    try {
        outcome.done = step.run();
    } catch (const std::bad_alloc&) {
        outcome.done = false;
    }
    outcome.failed = outOfMemory.HasFailed();
    outcome.allocations = outOfMemory.Allocations();
    return outcome;
}

/// What a session looks like where no allocation fails.
struct Reference {
    std::vector<long> allocations;    ///< of each step
    std::vector<std::string> states;  ///< after each step
};

template <typename Make>
Reference referenceOf(const Make& make) {
    const auto session = make();
    Reference reference;
    for (const Step& step : session->Steps()) {
        const Outcome outcome = runStep(step, 0);
        EXPECT_TRUE(outcome.done) << step.name;
        reference.allocations.push_back(outcome.allocations);
        reference.states.push_back(session->State());
    }
    return reference;
}

/// Runs a session in which the @p failing -th allocation of the step at @p place fails: the step
/// tells, leaves what it may leave and succeeds when it is repeated, or has done all its work
/// without that memory; and the session goes on to the same end.
template <typename Make>
void expectSessionToRecover(const Make& make, const Reference& reference, std::size_t place,
                            long failing) {
    const auto session = make();
    const std::vector<Step>& steps = session->Steps();
    for (std::size_t earlier = 0; earlier < place; ++earlier) {
        runStep(steps[earlier], 0);
    }
    const Step& step = steps[place];
    const std::string stateBefore = session->State();
    const std::string positionBefore = session->Position();

    const Outcome outcome = runStep(step, failing);
    EXPECT_TRUE(outcome.failed);
    if (!outcome.done) {
        EXPECT_EQ(session->Position(), positionBefore);
    }
    if (!outcome.done && step.afterwards == Afterwards::Unchanged) {
        EXPECT_EQ(session->State(), stateBefore);
    }
    // A few do without the memory that they asked for, such as a stable sort.
    if (!outcome.done || step.afterwards == Afterwards::Untold) {
        EXPECT_TRUE(runStep(step, 0).done) << "repeated";
    }
    EXPECT_EQ(session->State(), reference.states[place]) << "done, or repeated";
    for (std::size_t later = place + 1; later < steps.size(); ++later) {
        EXPECT_TRUE(runStep(steps[later], 0).done) << steps[later].name;
    }
    EXPECT_EQ(session->State(), reference.states.back()) << "at the end";
}

/// Lets every allocation of every step fail, in one session each, which @p make answers as a
/// std::unique_ptr. Prints and answers how many failed.
template <typename Make>
long failEveryAllocation(const Make& make) {
    referenceOf(make);  // what is allocated once in a process is allocated here
    const Reference reference = referenceOf(make);
    long failures = 0;
    for (std::size_t place = 0; place < reference.allocations.size(); ++place) {
        const std::string name = make()->Steps()[place].name;
        for (long failing = 1; failing <= reference.allocations[place]; ++failing) {
            SCOPED_TRACE(name + ", allocation " + std::to_string(failing));
            const long blocks = OutOfMemory::BlocksInUse();
            expectSessionToRecover(make, reference, place, failing);
            EXPECT_EQ(OutOfMemory::BlocksInUse(), blocks) << "something leaks";
            ++failures;
            if (::testing::Test::HasFailure()) {
                return failures;  // the next ones would only repeat it
            }
        }
    }
    std::printf("%ld allocations of %zu operations failed, each in a session of its own\n",
                failures, reference.allocations.size());
    return failures;
}

/// Records the number of failures of a test as its property AllocationsFailed.
inline void recordFailures(long failures) {
    ::testing::Test::RecordProperty("AllocationsFailed", std::to_string(failures));
}

}  // namespace KesVizCore::support
