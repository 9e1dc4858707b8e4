#include "commands/OutputFile.h"

#include "commands/Errors.h"
#include "commands/Signals.h"

#include <filesystem>
#include <optional>
#include <system_error>

namespace kesview {

void checkOutput(const std::string& output, const std::string& input) {
    std::error_code unknown;
    if (std::filesystem::equivalent(output, input, unknown)) {
        throw UsageError("'" + output + "' is the file to read: write to another.");
    }
    const std::filesystem::path folder = std::filesystem::path(output).parent_path();
    if (!folder.empty() && !std::filesystem::exists(folder, unknown)) {
        throw OutputError("'" + output + "' cannot be written: there is no folder '" +
                          folder.string() + "'.");
    }
}

void writeOutput(const std::string& output, const std::function<void()>& write) {
    std::error_code unknown;
    const std::filesystem::file_status present = std::filesystem::status(output, unknown);
    std::optional<SignalsHeld> held;
    if (!std::filesystem::is_other(present)) {
        held.emplace();
    }
    write();
}

}  // namespace kesview
