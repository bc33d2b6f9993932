// Byte ranges of the multi-byte code sets, expanded into tables by the compiler.
#include "genutil/mbutil/step.h"

namespace genutil {
namespace {

struct Range {
    unsigned from, to;
};

class Builder {
  public:
    constexpr Builder() : m_table{} {
        for (unsigned b = 0; b < 256; ++b)
            m_table.first[b] = b == 0 ? 0 : b < 0x80 ? 1 : StepTable::kInvalid;
    }
    constexpr Builder& Single(Range r) { return First(r, 1); }
    constexpr Builder& Pairs(Range r) {
        Note(m_table.leads, r);
        return First(r, StepTable::kPair);
    }
    constexpr Builder& Trail(Range r) {
        Note(m_table.trails, r);
        return Later(r, StepTable::kSecond);
    }
    // 0x8E begins a character of `length` bytes whose second byte is in `second`.
    constexpr Builder& Shift2(std::uint8_t length, Range second) {
        m_table.hasShifts = true;
        return First({0x8E, 0x8E}, static_cast<std::uint8_t>(length | StepTable::kShifted))
            .Later(second, StepTable::kShifted);
    }
    // 0x8F begins a character of three bytes.
    constexpr Builder& Shift3() {
        m_table.hasShifts = true;
        return First({0x8F, 0x8F}, 3 | StepTable::kSecond);
    }
    constexpr StepTable Table() const { return m_table; }

  private:
    constexpr Builder& First(Range r, std::uint8_t rule) {
        for (unsigned b = r.from; b <= r.to; ++b) m_table.first[b] = rule;
        return *this;
    }
    constexpr Builder& Later(Range r, std::uint8_t kind) {
        for (unsigned b = r.from; b <= r.to; ++b) m_table.later[b] |= kind;
        return *this;
    }
    static constexpr void Note(StepTable::Ranges& ranges, Range r) {
        for (unsigned i = 0; i < 16; ++i) {
            ranges.low[ranges.count][i] = static_cast<std::uint8_t>(r.from);
            ranges.span[ranges.count][i] = static_cast<std::uint8_t>(r.to - r.from);
        }
        ++ranges.count;
    }
    StepTable m_table;
};

constexpr Range kHigh{0xA1, 0xFE};  // both bytes of the EUC encodings

constexpr StepTable kEucJp =
    Builder().Pairs(kHigh).Trail(kHigh).Shift2(2, {0xA1, 0xDF}).Shift3().Table();
// The user-defined rows 0xF0 to 0xFC are not characters here, and 0x7F is a trail byte, because
// stored texts depend on these rules.
constexpr StepTable kShiftJis = Builder()
                                    .Single({0xA1, 0xDF})
                                    .Pairs({0x81, 0x9F})
                                    .Pairs({0xE0, 0xEF})
                                    .Trail({0x40, 0xFC})
                                    .Table();
constexpr StepTable kEuc = Builder().Pairs(kHigh).Trail(kHigh).Table();
// Lead bytes from 0xA1 only, not 0x81, because programs depend on it.
constexpr StepTable kBig5 = Builder().Pairs(kHigh).Trail({0x40, 0x7E}).Trail(kHigh).Table();
constexpr StepTable kEucTw = Builder().Pairs(kHigh).Trail(kHigh).Shift2(4, {0xA2, 0xB0}).Table();
constexpr StepTable kKorean = Builder()
                                  .Pairs({0x81, 0xFE})
                                  .Trail({0x41, 0x5A})
                                  .Trail({0x61, 0x7A})
                                  .Trail({0x81, 0xFE})
                                  .Table();
constexpr StepTable kJohab = Builder()
                                 .Pairs({0x84, 0xD3})
                                 .Pairs({0xD8, 0xDE})
                                 .Pairs({0xE0, 0xF9})
                                 .Trail({0x41, 0x7E})
                                 .Trail({0x81, 0xFE})
                                 .Table();

}  // namespace

const StepTable* StepTableOf(int codeSet) {
    switch (codeSet) {
        case mbEucJp:
            return &kEucJp;
        case mbShiftJis:
            return &kShiftJis;
        case mbGb2312:
        case mbEucCn:
        case mbEucKr:
            return &kEuc;
        case mbBig5:
            return &kBig5;
        case mbEucTw:
            return &kEucTw;
        case mbKorean:
            return &kKorean;
        case mbJohab:
            return &kJohab;
        default:
            return nullptr;
    }
}

const StepTable* g_currentStep = nullptr;

}  // namespace genutil
