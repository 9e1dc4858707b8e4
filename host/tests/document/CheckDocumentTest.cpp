/// @file
#include "document/CheckDocument.h"
#include "document/FullDocument.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace kesview {
namespace {

std::string faultOf(const Document& document) {
    try {
        checkDocument(document);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

Face& faceOf(Document& document) {
    return document.products[1].bodies[0].faces[0];
}

/// Products 0, 1, … in a row, each the only component of the one before.
Document chain(std::uint32_t length) {
    Document document;
    document.products.resize(length);
    for (std::uint32_t i = 0; i < length; ++i) {
        document.products[i].id = 2 + i;
        if (i + 1 < length) {
            document.products[i].components.resize(1);
            document.products[i].components[0].product = i + 1;
        }
    }
    return document;
}

TEST(CheckDocumentTest, ASoundDocumentPasses) {
    EXPECT_EQ(faultOf(fullDocument()), "");
    EXPECT_EQ(faultOf(Document()), "");
}

TEST(CheckDocumentTest, AComponentNeedsItsProduct) {
    Document document = fullDocument();
    document.products[0].components[1].product = 2;
    EXPECT_EQ(faultOf(document), "Component 4 is of a product that does not exist.");
}

TEST(CheckDocumentTest, AProductInItselfIsFound) {
    Document document = chain(1);
    document.products[0].components.resize(1);
    EXPECT_EQ(faultOf(document), "Product 2 contains itself, or what contains itself.");
}

TEST(CheckDocumentTest, ALongCycleIsFoundAndItsLengthIsNoDepthOfCalls) {
    Document document = chain(200'000);
    EXPECT_EQ(faultOf(document), "");
    document.products.back().components.resize(1);
    document.products.back().components[0].product = 100'000;
    EXPECT_EQ(faultOf(document), "Product 100002 contains itself, or what contains itself.");
}

TEST(CheckDocumentTest, AProductUsedTwiceIsNoCycle) {
    Document document = chain(2);
    document.products[0].components.resize(2, document.products[0].components[0]);
    EXPECT_EQ(faultOf(document), "");
}

TEST(CheckDocumentTest, PointsAreTriples) {
    Document document = fullDocument();
    faceOf(document).points.push_back(0);
    EXPECT_EQ(faultOf(document), "Face 11 has points that are not whole triples.");
    document = fullDocument();
    document.products[1].bodies[0].edges[0].points.pop_back();
    EXPECT_EQ(faultOf(document), "Edge 12 has points that are not whole triples.");
    document = fullDocument();
    document.products[1].bodies[0].points.pop_back();
    EXPECT_EQ(faultOf(document), "Body 10 has points that are not whole triples.");
    document = fullDocument();
    document.annotations[0].lines[1].push_back(0);
    EXPECT_EQ(faultOf(document), "Annotation 30 has points that are not whole triples.");
}

TEST(CheckDocumentTest, NormalsAreAsManyAsPointsOrNone) {
    Document document = fullDocument();
    faceOf(document).normals.resize(6);
    EXPECT_EQ(faultOf(document), "Face 11 has not one normal for each point.");
    faceOf(document).normals.clear();
    EXPECT_EQ(faultOf(document), "");
}

TEST(CheckDocumentTest, TrianglesStandOnPointsThatExist) {
    Document document = fullDocument();
    faceOf(document).triangles = {0, 1, 3};
    EXPECT_EQ(faultOf(document), "Face 11 has a triangle on a point that does not exist.");
    faceOf(document).triangles = {0, -1, 2};
    EXPECT_EQ(faultOf(document), "Face 11 has a triangle on a point that does not exist.");
    faceOf(document).triangles = {0, 1};
    EXPECT_EQ(faultOf(document), "Face 11 has triangles without three corners.");
    document = fullDocument();
    document.annotations[0].areas[0].triangles = {0, 1, 3};
    EXPECT_EQ(faultOf(document), "Annotation 30 has a triangle on a point that does not exist.");
}

}  // namespace
}  // namespace kesview
