#include <KesVizCore/model/AVizElementLoader.h>
#include <KesVizCore/model/VizElement.h>

#include <cstdint>

namespace KesVizCore {

namespace {

std::uint32_t lastElementId = 0;  // one sequence for the whole process

}  // namespace

AVizElementLoader::AVizElementLoader() : _transformation{} {}

AVizElementLoader::AVizElementLoader(const AVizElementLoader& other) = default;
AVizElementLoader& AVizElementLoader::operator=(const AVizElementLoader& other) = default;
AVizElementLoader::~AVizElementLoader() = default;

VizElement* AVizElementLoader::Load() {
    VizElement* const element = createAndFill();
    if (element == nullptr) {
        return nullptr;
    }
    element->setID(static_cast<std::uint64_t>(std::int64_t{getNextID()}));
    return element;
}

int AVizElementLoader::getNextID() {
    return static_cast<std::int32_t>(++lastElementId);
}

bool AVizElementLoader::IsIdentityTranformation() {
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            if (_transformation[row][column] != (row == column ? 1.0F : 0.0F)) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace KesVizCore
