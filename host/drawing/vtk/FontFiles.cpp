#include "drawing/vtk/FontFiles.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace kesview {
namespace {

namespace fs = std::filesystem;

constexpr std::array<const char*, 4> fontNames = {"osifont.ttf", "DejaVuSans.ttf",
                                                  "Symbola_hint.ttf", "Symbola.ttf"};

std::vector<fs::path> fontFolders() {
    if (const char* folder = std::getenv("KESVIEW_FONTS"))
        return {folder};
    std::vector<fs::path> folders = {"/usr/share/fonts", "/usr/local/share/fonts"};
    if (const char* home = std::getenv("HOME"))
        folders.push_back(fs::path(home) / ".local/share/fonts");
    return folders;
}

void findIn(const fs::path& folder, std::array<std::string, fontNames.size()>& found) {
    std::error_code error;
    const auto options = fs::directory_options::skip_permission_denied;
    for (fs::recursive_directory_iterator entry(folder, options, error), end;
         !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        for (std::size_t i = 0; i < fontNames.size(); ++i) {
            if (name == fontNames[i] && found[i].empty())
                found[i] = entry->path().string();
        }
    }
}

}  // namespace

std::vector<std::string> findFontFiles() {
    std::array<std::string, fontNames.size()> found;
    for (const fs::path& folder : fontFolders())
        findIn(folder, found);
    std::vector<std::string> files;
    for (const std::string& file : found) {
        if (!file.empty())
            files.push_back(file);
    }
    return files;
}

}  // namespace kesview
