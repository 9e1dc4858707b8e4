#include "drawing/vtk/RenderTarget.h"

#include "drawing/Drawing.h"

#include <GL/gl.h>
#include <algorithm>
#include <string>
#include <vtkRenderer.h>
#include <vtkUnsignedCharArray.h>

namespace kesview {
namespace {

void checkSize(int width, int height) {
    GLint limit = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &limit);
    if (width >= 1 && height >= 1 && width <= limit && height <= limit)
        return;
    throw DrawError("A picture of " + std::to_string(width) + " x " + std::to_string(height) +
                    " pixels cannot be drawn: each side must be 1 to " + std::to_string(limit));
}

}  // namespace

Image RenderTarget::Draw(vtkRenderer& renderer, int width, int height, int samples) {
    _window->MakeCurrent();
    checkSize(width, height);
    GLint mostSamples = 0;
    glGetIntegerv(GL_MAX_SAMPLES, &mostSamples);

    _window->SetSize(width, height);
    _window->SetMultiSamples(samples < 2 ? 0 : std::min(samples, mostSamples));
    _window->AddRenderer(&renderer);
    _window->Render();
    Image image = readBack();
    _window->RemoveRenderer(&renderer);
    if (image.pixels.empty())
        throw DrawError("The picture could not be read back from the driver");
    return image;
}

Image RenderTarget::readBack() {
    const int* size = _window->GetSize();
    Image image;
    image.width = size[0];
    image.height = size[1];
    vtkNew<vtkUnsignedCharArray> upwards;
    _window->GetPixelData(0, 0, image.width - 1, image.height - 1, 0, upwards, 0);
    const std::ptrdiff_t row = std::ptrdiff_t(3) * image.width;
    if (upwards->GetNumberOfValues() != row * image.height)
        return image;
    image.pixels.reserve(std::size_t(row * image.height));
    for (int y = image.height - 1; y >= 0; --y) {
        const std::uint8_t* first = upwards->GetPointer(row * y);
        image.pixels.insert(image.pixels.end(), first, first + row);
    }
    return image;
}

}  // namespace kesview
