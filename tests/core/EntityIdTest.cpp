#include <KesVizCore/core/EntityId.h>

#include <gtest/gtest.h>
