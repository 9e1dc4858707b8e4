/// @file
/// The DLL as a file and as a module: its name, its version, its part in the heap.

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <malloc.h>
#include <memory>
#include <string>
#include <vector>
#include <windows.h>

namespace KesVizCore {
namespace {

constexpr const wchar_t* kName = L"KesVizCore.dll";

std::wstring pathOfTheLibrary() {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(
        GetModuleFileNameW(GetModuleHandleW(kName), path.data(), static_cast<DWORD>(path.size())));
    return path;
}

/// What the version resource of the loaded library says.
class Version {
public:
    Version() {
        const std::wstring path = pathOfTheLibrary();
        _data.resize(GetFileVersionInfoSizeW(path.c_str(), nullptr));
        GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(_data.size()), _data.data());
    }
    VS_FIXEDFILEINFO numbers() const {
        void* value = nullptr;
        UINT size = 0;
        VerQueryValueW(_data.data(), L"\\", &value, &size);
        return value != nullptr ? *static_cast<VS_FIXEDFILEINFO*>(value) : VS_FIXEDFILEINFO{};
    }
    /// The value of that name in American English, UTF-16; "none" when there is none.
    std::wstring text(const std::wstring& name) const {
        void* value = nullptr;
        UINT size = 0;
        const std::wstring path = L"\\StringFileInfo\\040904B0\\" + name;
        const bool hasValue = VerQueryValueW(_data.data(), path.c_str(), &value, &size);
        return hasValue ? std::wstring(static_cast<wchar_t*>(value)) : L"none";
    }

private:
    std::vector<unsigned char> _data;
};

/// "1.2.3.4" of two numbers of four 16-bit parts.
std::string dotted(DWORD high, DWORD low) {
    return std::to_string(HIWORD(high)) + "." + std::to_string(LOWORD(high)) + "." +
           std::to_string(HIWORD(low)) + "." + std::to_string(LOWORD(low));
}

TEST(ModuleWindowsTest, TheLibraryIsLoadedUnderItsName) {
    const std::wstring path = pathOfTheLibrary();
    EXPECT_EQ(path.substr(path.rfind(L'\\') + 1), kName);
}

TEST(ModuleWindowsTest, VersionNumbersAreTheProjects) {
    const VS_FIXEDFILEINFO numbers = Version().numbers();
    EXPECT_EQ(dotted(numbers.dwFileVersionMS, numbers.dwFileVersionLS),
              KESVIZCORE_EXPECTED_VERSION ".0");
    EXPECT_EQ(dotted(numbers.dwProductVersionMS, numbers.dwProductVersionLS),
              KESVIZCORE_EXPECTED_VERSION ".0");
    EXPECT_EQ(numbers.dwFileType, DWORD{VFT_DLL});
}

TEST(ModuleWindowsTest, VersionTextsNameTheLibrary) {
    const Version version;
    const std::wstring expected = Utils::StringToWstring(KESVIZCORE_EXPECTED_VERSION);
    EXPECT_EQ(version.text(L"FileVersion"), expected);
    EXPECT_EQ(version.text(L"ProductVersion"), expected);
    EXPECT_EQ(version.text(L"InternalName"), L"KesVizCore");
    EXPECT_EQ(version.text(L"OriginalFilename"), kName);
    EXPECT_EQ(version.text(L"ProductName"), L"KesVizCore");
    EXPECT_EQ(version.text(L"FileDescription"),
              Utils::StringToWstring(KESVIZCORE_EXPECTED_DESCRIPTION));
}

/// The blocks in use on the heap that the C library keeps for all modules.
long blocksInUse() {
    PROCESS_HEAP_ENTRY entry{};
    long blocks = 0;
    auto* const heap = reinterpret_cast<HANDLE>(_get_heap_handle());
    while (HeapWalk(heap, &entry)) {
        blocks += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? 1 : 0;
    }
    return blocks;
}

/// Blocks made on one side and released on the other, both ways, and an exception.
void crossOver() {
    const std::unique_ptr<Node> root(Node::CreateRoot());
    Node* const child = root->CreateChild(2);
    child->SetName(std::wstring(1000, L'n'));
    child->SetAttribute(new AttributeColor(RGBAColor::Red(), true));
    RenderId* id = child->GetRenderId();
    RenderId::DeleteRenderId(id);
    auto* ids = new RenderId[3];
    ids[1].SetLength(100);
    RenderId::DeleteRenderIdArr(ids);
    const std::wstring wide = Utils::StringToWstring(child->ToString());
    EXPECT_THROW(RenderId().SetLength(-1), std::length_error);
}

TEST(ModuleWindowsTest, WhatCrossesTheBoundaryLeavesTheHeapSoundAndAsItWas) {
    crossOver();  // what the first call alone allocates stays
    const long before = blocksInUse();
    EXPECT_GT(before, 0);
    for (int round = 0; round < 100; ++round) {
        crossOver();
    }
    EXPECT_EQ(blocksInUse(), before);
    EXPECT_EQ(_heapchk(), _HEAPOK);
}

}  // namespace
}  // namespace KesVizCore
