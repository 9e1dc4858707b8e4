#pragma once

/// @file
/// Everything that the library offers, in one include.

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/FontAttr.h>
#include <KesVizCore/core/RGBAColor.h>
#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/core/TriangleType.h>
