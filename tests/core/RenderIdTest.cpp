#include <KesVizCore/core/RenderId.h>

#include <gtest/gtest.h>
