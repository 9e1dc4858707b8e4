#include <KesVizCore/core/Pooled.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <stdexcept>
#include <thread>
#include <vector>

namespace KesVizCore {
namespace {

/// An object of any size that knows what was written into it.
template <std::size_t size>
class Filled : public Pooled {
public:
    explicit Filled(unsigned char value) { std::memset(_bytes, value, size); }
    bool Holds(unsigned char value) const {
        return std::all_of(std::begin(_bytes), std::end(_bytes),
                           [value](unsigned char byte) { return byte == value; });
    }

private:
    unsigned char _bytes[size];
};

bool isAligned(const void* object, std::size_t alignment) {
    return reinterpret_cast<std::uintptr_t>(object) % alignment == 0;
}

/// Makes and destroys objects in random order, thousands at a time, and looks at each before.
template <std::size_t size>
void makeAndDestroy(unsigned seed) {
    std::mt19937 random(seed);
    std::vector<std::unique_ptr<Filled<size>>> objects;
    std::vector<unsigned char> values;
    for (int step = 0; step < 8'000; ++step) {
        const bool grows = step / 2'000 % 2 == 0;
        if (random() % 4 != 0 ? grows : !grows || objects.empty()) {
            values.push_back(static_cast<unsigned char>(random()));
            objects.push_back(std::make_unique<Filled<size>>(values.back()));
            ASSERT_TRUE(isAligned(objects.back().get(), __STDCPP_DEFAULT_NEW_ALIGNMENT__));
        } else if (!objects.empty()) {
            const std::size_t place = random() % objects.size();
            ASSERT_TRUE(objects[place]->Holds(values[place]));
            objects[place].swap(objects.back());
            std::swap(values[place], values.back());
            objects.pop_back();
            values.pop_back();
        }
    }
}

/// Each test runs with slabs and without.
class PooledTest : public testing::TestWithParam<bool> {
protected:
    PooledTest() { Pooled::UseSlabs(GetParam()); }
    ~PooledTest() override { Pooled::UseSlabs(true); }
};

TEST_P(PooledTest, ObjectsOfEverySizeKeepWhatTheyHold) {
    makeAndDestroy<1>(1);
    makeAndDestroy<8>(2);
    makeAndDestroy<9>(3);
    makeAndDestroy<24>(4);
    makeAndDestroy<25>(5);
    makeAndDestroy<72>(6);
    makeAndDestroy<119>(7);
    makeAndDestroy<120>(8);
    makeAndDestroy<121>(9);
    makeAndDestroy<500>(10);
}

TEST_P(PooledTest, ObjectsMayBeDestroyedOnAnotherThread) {
    std::vector<std::unique_ptr<Filled<72>>> made;
    std::thread maker([&made] {
        for (int count = 0; count < 10'000; ++count) {
            made.push_back(std::make_unique<Filled<72>>(1));
        }
    });
    makeAndDestroy<72>(11);
    maker.join();
    std::thread destroyer([&made] { made.clear(); });
    makeAndDestroy<72>(12);
    destroyer.join();
}

TEST_P(PooledTest, ManyThreadsMakeAndDestroyObjectsAtATime) {
    std::vector<std::thread> threads;
    std::atomic<int> broken{0};
    for (unsigned char number = 1; number <= 4; ++number) {
        threads.emplace_back([number, &broken] {
            std::vector<std::unique_ptr<Filled<40>>> objects(50);
            for (int round = 0; round < 1000; ++round) {
                for (std::unique_ptr<Filled<40>>& object : objects) {
                    broken += object != nullptr && !object->Holds(number) ? 1 : 0;
                    object = std::make_unique<Filled<40>>(number);
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(broken, 0);
}

TEST_P(PooledTest, EveryFormOfNewMeetsItsDelete) {
    delete new Filled<24>(1);
    delete new (std::nothrow) Filled<24>(2);
    alignas(Filled<24>) unsigned char memory[sizeof(Filled<24>)];
    auto* const placed = new (memory) Filled<24>(3);
    EXPECT_EQ(static_cast<void*>(placed), memory);
    placed->~Filled<24>();
    delete static_cast<Filled<24>*>(nullptr);
    delete[] new Filled<24>[2] { Filled<24>(4), Filled<24>(5) };
    EXPECT_TRUE(std::make_shared<Filled<24>>(static_cast<unsigned char>(6))->Holds(6));
}

TEST_P(PooledTest, DeleteLeavesNullAlone) {
    Pooled::operator delete(nullptr);
    Pooled::operator delete(nullptr, std::nothrow);
    EXPECT_NE(std::make_unique<Filled<24>>(static_cast<unsigned char>(1)), nullptr);
}

struct alignas(256) WideObject : Pooled {};

TEST_P(PooledTest, OverAlignedObjectsAreAligned) {
    for (int count = 0; count < 10; ++count) {
        const auto object = std::make_unique<WideObject>();
        EXPECT_NE(object, nullptr);
        EXPECT_TRUE(isAligned(object.get(), 256));
    }
}

struct Refusing : Pooled {
    Refusing() { throw std::runtime_error("refused"); }
    unsigned char bytes[24] = {};
};

TEST_P(PooledTest, AnObjectThatIsNeverMadeLeavesNothing) {
    for (int count = 0; count < 1000; ++count) {
        EXPECT_THROW(delete new Refusing, std::runtime_error);
        EXPECT_THROW(delete new (std::nothrow) Refusing, std::runtime_error);
        unsigned char memory[sizeof(Refusing)];
        EXPECT_THROW(new (memory) Refusing, std::runtime_error);
    }
}

struct Base : Pooled {
    virtual ~Base() = default;
};
struct Derived : Base {
    unsigned char bytes[300] = {};
};

TEST_P(PooledTest, AnObjectIsDestroyedThroughItsBase) {
    const std::unique_ptr<Base> object = std::make_unique<Derived>();
    EXPECT_NE(object, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Storage, PooledTest, testing::Bool(),
                         [](const auto& slabs) { return slabs.param ? "Slabs" : "Heap"; });

}  // namespace
}  // namespace KesVizCore
