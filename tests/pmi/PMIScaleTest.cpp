// Collections as large as whole assemblies. Walking all elements for each of the names would take
// 10,000,000,000 comparisons for every answer, and so many minutes; one walk for all takes none.

#include "pmi/PMITestKit.h"
#include "support/Scale.h"

#include <KesVizCore/pmi/VizPMICollection.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::Model;
using support::OpenCollection;

const std::uint64_t kMembers = support::scaled(100'000U);

std::wstring nameOf(std::uint64_t number) {
    return L"annotation " + std::to_wstring(number);
}

/// Prints the seconds from its construction to its destruction.
class Timed {
public:
    explicit Timed(const char* what) : _what(what) {}
    Timed(const Timed&) = delete;
    Timed& operator=(const Timed&) = delete;
    ~Timed() {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - _begin;
        std::printf("%s: %.3f s\n", _what, passed.count());
    }

private:
    const char* _what;
    std::chrono::steady_clock::time_point _begin = std::chrono::steady_clock::now();
};

/// Counts how often the library asks what it is.
class CountingElement : public support::HostElement {
public:
    explicit CountingElement(long& asked) : HostElement("Note"), _asked(asked) {}
    ~CountingElement() override = default;
    std::string GetElementType() const override {
        ++_asked;
        return HostElement::GetElementType();
    }

private:
    long& _asked;
};

/// 100,000 annotations that are members, named in an order that is not the map's, and as many
/// elements that are none.
class PMIScaleTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        _model = new Model;
        for (std::uint64_t number = 0; number < kMembers; ++number) {
            const auto x = static_cast<float>(number);
            VizPMI& pmi = _model->Add(2 * number, support::pmiOf(nameOf(number), {x, -x, 0,  //
                                                                                  x, x, 1}));
            pmi.Set3DRenderID(support::idIn3D({1, number}));
            _model->AddMesh(2 * number + 1, L"other", support::idIn3D({2, number}));
        }
        _collection = new OpenCollection(*_model, names());
    }
    static void TearDownTestSuite() {
        delete _collection;
        delete _model;
    }
    static std::vector<std::wstring> names() {
        std::vector<std::wstring> all;
        for (std::uint64_t number = kMembers; number > 0; --number) {
            all.push_back(nameOf(number - 1));
        }
        return all;
    }
    /// Checks the first and the last, which the order of the names decides, and releases them.
    static void expectIds(RenderId* ids, int count, const RenderId& first, const RenderId& last) {
        ASSERT_EQ(count, static_cast<int>(kMembers));
        EXPECT_EQ(ids[0], first);
        EXPECT_EQ(ids[count - 1], last);
        RenderId::DeleteRenderIdArr(ids);
    }

    static Model* _model;
    static OpenCollection* _collection;
};

Model* PMIScaleTest::_model = nullptr;
OpenCollection* PMIScaleTest::_collection = nullptr;

TEST_F(PMIScaleTest, AnswersTheRenderIdsOfAHundredThousandMembers) {
    const Timed timed("member render ids");
    RenderId* ids = nullptr;
    int count = 0;
    EXPECT_TRUE(_collection->GetMemberRenderIds(ids, count, false));
    expectIds(ids, count, support::idIn3D({1, kMembers - 1}), support::idIn3D({1, 0}));
}

TEST_F(PMIScaleTest, AnswersTheRenderIdsOfAHundredThousandOthers) {
    const Timed timed("other render ids");
    RenderId* ids = nullptr;
    int count = 0;
    EXPECT_TRUE(_collection->GetNonmemberRenderIds(ids, count));
    expectIds(ids, count, support::idIn3D({2, 0}), support::idIn3D({2, kMembers - 1}));
}

TEST_F(PMIScaleTest, AnswersTheRenderIdsOfAListOfAHundredThousand) {
    const Timed timed("render ids of a list");
    RenderId* ids = nullptr;
    int count = 0;
    EXPECT_TRUE(_collection->GetRenderIdsFromList(ids, count, names()));
    expectIds(ids, count, support::idIn3D({1, kMembers - 1}), support::idIn3D({1, 0}));
}

TEST_F(PMIScaleTest, TellsMembersFromOthersAmongTwoHundredThousand) {
    const Timed timed("membership");
    std::uint64_t members = 0;
    for (const auto& entry : *_model->Map()) {
        members += _collection->IsMember(*entry.second) ? 1U : 0U;
    }
    EXPECT_EQ(members, kMembers);
}

TEST_F(PMIScaleTest, AccumulatesTheExtremaOfAHundredThousandMembers) {
    const Timed timed("extrema");
    OpenCollection collection(*_collection);
    EXPECT_TRUE(collection.AccumulatePMIExtrema());
    const auto last = static_cast<float>(kMembers - 1);
    EXPECT_EQ(support::grownExtremaOf(collection),
              support::grown({0, -last, -4.5F, last, last, 5.5F}));
}

TEST_F(PMIScaleTest, AsksEachNamedElementOnceAtMostWhatItIs) {
    long asked = 0;
    Model model;
    for (std::uint64_t number = 0; number < kMembers; ++number) {
        auto element = std::make_unique<CountingElement>(asked);
        element->SetVisualID(nameOf(number));
        model.Add(number, std::move(element));
    }
    OpenCollection collection(model, names());
    EXPECT_TRUE(collection.AccumulatePMIExtrema());
    EXPECT_LE(asked, static_cast<long>(kMembers));
}

}  // namespace
}  // namespace KesVizCore
