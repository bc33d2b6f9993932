// Operations on 16 bytes beside loops over lanes, in the form of this build.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <random>

#include "genutil/simd.h"

#ifndef SIMD_SUITE
#define SIMD_SUITE Simd
#endif

namespace {

using namespace genutil;
using simd::Vector;
using Bytes = std::array<std::uint8_t, 16>;
using Words = std::array<std::uint16_t, 8>;

template <class Lanes>
Vector FromLanes(const Lanes& lanes) {
    return simd::Load(lanes.data());
}
template <class Lanes>
Lanes ToLanes(Vector v) {
    Lanes lanes;
    simd::Store(lanes.data(), v);
    return lanes;
}

// Random bytes, half of them at the bounds of signed and of unsigned ones.
class Blocks {
  public:
    Bytes Next() {
        static constexpr std::uint8_t kBounds[] = {0x00, 0x01, 0x7F, 0x80, 0x81, 0xFE, 0xFF};
        Bytes bytes;
        for (auto& byte : bytes) {
            const unsigned number = m_numbers();
            byte = static_cast<std::uint8_t>(number & 1 ? number >> 8 : kBounds[(number >> 8) % 7]);
        }
        return bytes;
    }

  private:
    std::mt19937 m_numbers{16};
};
constexpr int kRounds = 3000;

struct Row {
    const char* name;
    Vector (*operation)(Vector, Vector);
    int (*lane)(int, int);  // of unsigned lanes; its low bits are the result
};

template <class Lanes>
void Compare(const Row& row, const Bytes& a, const Bytes& b) {
    Lanes x = ToLanes<Lanes>(FromLanes(a)), y = ToLanes<Lanes>(FromLanes(b)), expected;
    for (std::size_t i = 0; i < x.size(); ++i)
        expected[i] = static_cast<typename Lanes::value_type>(row.lane(x[i], y[i]));
    ASSERT_EQ(ToLanes<Lanes>(row.operation(FromLanes(a), FromLanes(b))), expected) << row.name;
}

int Signed(int word) {
    return static_cast<std::int16_t>(word);
}

}  // namespace

TEST(SIMD_SUITE, WorksOnLanes) {
    using V = Vector;
    static const Row kBytes[] = {
        {"and", [](V a, V b) { return a & b; }, [](int a, int b) { return a & b; }},
        {"or", [](V a, V b) { return a | b; }, [](int a, int b) { return a | b; }},
        {"xor", [](V a, V b) { return a ^ b; }, [](int a, int b) { return a ^ b; }},
        {"and not", simd::AndNot, [](int a, int b) { return a & ~b; }},
        {"equal", simd::Equal8, [](int a, int b) { return -(a == b); }},
        {"add", simd::Add8, [](int a, int b) { return a + b; }},
        {"sub", simd::Sub8, [](int a, int b) { return a - b; }},
        {"min", simd::Min8, [](int a, int b) { return std::min(a, b); }},
        {"max", simd::Max8, [](int a, int b) { return std::max(a, b); }},
        {"in span", [](V a, V b) { return simd::InSpan8(a, b, simd::Splat8(0x60)); },
         [](int a, int b) { return -(((a - b) & 0xFF) <= 0x60); }},
        {"in range", [](V a, V) { return simd::InRange8(a, 0x7F, 0xFE); },
         [](int a, int) { return -(a >= 0x7F && a <= 0xFE); }},
        {"splat", [](V, V) { return simd::Splat8(0x1FE); }, [](int, int) { return 0xFE; }},
        {"zero", [](V, V) { return simd::Zero(); }, [](int, int) { return 0; }},
    };
    static const Row kWords[] = {
        {"equal", simd::Equal16, [](int a, int b) { return -(a == b); }},
        {"greater", simd::Greater16, [](int a, int b) { return -(Signed(a) > Signed(b)); }},
        {"add", simd::Add16, [](int a, int b) { return a + b; }},
        {"sub", simd::Sub16, [](int a, int b) { return a - b; }},
        {"left 1", [](V a, V) { return simd::ShiftLeft16<1>(a); },
         [](int a, int) { return a << 1; }},
        {"left 15", [](V a, V) { return simd::ShiftLeft16<15>(a); },
         [](int a, int) { return a << 15; }},
        {"right 1", [](V a, V) { return simd::ShiftRight16<1>(a); },
         [](int a, int) { return a >> 1; }},
        {"right 15", [](V a, V) { return simd::ShiftRight16<15>(a); },
         [](int a, int) { return a >> 15; }},
        {"splat", [](V, V) { return simd::Splat16(-97); }, [](int, int) { return -97; }},
    };
    Blocks blocks;
    for (int round = 0; round < kRounds; ++round) {
        const Bytes a = blocks.Next(), b = round % 8 ? blocks.Next() : a;
        for (const Row& row : kBytes) ASSERT_NO_FATAL_FAILURE(Compare<Bytes>(row, a, b));
        for (const Row& row : kWords) ASSERT_NO_FATAL_FAILURE(Compare<Words>(row, a, b));
    }
}

TEST(SIMD_SUITE, MovesLanes) {
    Blocks blocks;
    for (int round = 0; round < kRounds; ++round) {
        const Bytes a = blocks.Next(), b = blocks.Next();
        const Words x = ToLanes<Words>(FromLanes(a)), y = ToLanes<Words>(FromLanes(b));
        Words low, high;
        Bytes positive, any;
        unsigned top = 0;
        for (std::size_t i = 0; i < 16; ++i) {
            (i < 8 ? low[i] : high[i - 8]) = a[i];
            const int word = Signed(i < 8 ? x[i] : y[i - 8]);
            positive[i] = static_cast<std::uint8_t>(std::clamp(word, 0, 255));
            any[i] = static_cast<std::uint8_t>(std::clamp(word, -128, 127));
            top |= (a[i] >> 7) * 1u << i;
        }
        ASSERT_EQ(ToLanes<Words>(simd::WidenLow(FromLanes(a))), low);
        ASSERT_EQ(ToLanes<Words>(simd::WidenHigh(FromLanes(a))), high);
        ASSERT_EQ(ToLanes<Bytes>(simd::NarrowUnsigned(FromLanes(a), FromLanes(b))), positive);
        ASSERT_EQ(ToLanes<Bytes>(simd::NarrowSigned(FromLanes(a), FromLanes(b))), any);
        ASSERT_EQ(simd::TopBits(FromLanes(a)), top);
    }
}

TEST(SIMD_SUITE, ReadsAndWritesAtAnyAddress) {
    Blocks blocks;
    for (std::size_t at = 0; at < 16; ++at) {
        std::array<std::uint8_t, 48> from, to, expected;
        for (std::size_t i = 0; i < 48; i += 16) {
            const auto block = blocks.Next();
            std::copy(block.begin(), block.end(), &from[i]);
        }

        to.fill(0xA5), expected.fill(0xA5);
        std::memcpy(&expected[at], &from[at + 1], 16);
        simd::Store(&to[at], simd::Load(&from[at + 1]));
        EXPECT_EQ(to, expected) << at;

        to.fill(0xA5), expected.fill(0xA5);
        std::memcpy(&expected[at], &from[at + 1], 8);
        simd::StoreHalf(&to[at], simd::Load(&from[at + 1]));
        EXPECT_EQ(to, expected) << at;

        std::memset(&expected[at + 8], 0, 8);
        simd::Store(&to[at], simd::LoadHalf(&from[at + 1]));
        EXPECT_EQ(to, expected) << at;

        std::uint64_t halves[2];
        std::memcpy(halves, &from[at], 16);
        std::memcpy(&expected[at], &from[at], 16);
        simd::Store(&to[at], simd::Join(halves[0], halves[1]));
        EXPECT_EQ(to, expected) << at;
    }
    simd::Pause();
}
