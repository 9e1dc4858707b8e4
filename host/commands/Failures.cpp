#include "commands/Failures.h"

#include "commands/Console.h"
#include "commands/Errors.h"
#include "drawing/Drawing.h"
#include "reading/ReadFile.h"

#include <exception>
#include <new>
#include <string>
#include <system_error>

namespace kesview {

namespace {

ExitCode codeOf(ReadFailure failure) {
    switch (failure) {
        case ReadFailure::Unreadable:
            return ExitCode::Unreadable;
        case ReadFailure::UnknownFormat:
            return ExitCode::UnknownFormat;
        case ReadFailure::LimitReached:
            return ExitCode::LimitReached;
        case ReadFailure::Interrupted:
            return ExitCode::Interrupted;
        case ReadFailure::Damaged:
            break;
    }
    return ExitCode::Damaged;
}

ExitCode say(Streams& streams, const std::string& message, ExitCode code) {
    Console(streams, CommonOptions()).Error(message);
    return code;
}

}  // namespace

ExitCode answerFailures(Streams& streams, const std::function<ExitCode()>& work) {
    try {
        return work();
    } catch (const ReadError& error) {
        return say(streams, error.what(), codeOf(error.Failure()));
    } catch (const UsageError& error) {
        return say(streams, error.what(), ExitCode::Usage);
    } catch (const OutputError& error) {
        return say(streams, error.what(), ExitCode::Unreadable);
    } catch (const LimitError& error) {
        return say(streams, error.what(), ExitCode::LimitReached);
    } catch (const DrawError& error) {
        return say(streams, error.what(), ExitCode::CannotDraw);
    } catch (const std::bad_alloc&) {
        return say(streams, "there is not enough memory for this file.", ExitCode::LimitReached);
    } catch (const std::system_error& error) {
        return say(streams, error.what(), ExitCode::Unreadable);
    } catch (const std::exception& error) {
        return say(streams, error.what(), ExitCode::Damaged);
    }
}

}  // namespace kesview
