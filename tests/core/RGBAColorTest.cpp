#include <KesVizCore/core/RGBAColor.h>

#include <gtest/gtest.h>
