// Replacement in text of bytes or of 16-bit characters. Matches are counted first, and the result
// is written to a buffer of the exact size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "genutil/simd.h"
#include "genutil/string/storage.h"
#include "genutil/string/unit_search.h"

namespace genutil {

template <class Unit>
struct UnitRule {
    const Unit* from;
    std::size_t fromLength;  // at least 1
    const Unit* to;
    std::size_t toLength;
};

// A few rules that are searched for together.
template <class Unit>
struct UnitRules {
    UnitRule<Unit> rules[UnitFinder<Unit>::kMost] = {};
    unsigned count = 0;

    void Add(const UnitRule<Unit>& rule) { rules[count++] = rule; }

    // Returns the first rule that matches at `at`, where `left` units of text remain, or null if
    // there is none.
    const UnitRule<Unit>* At(const Unit* at, std::size_t left) const {
        for (unsigned i = 0; i < count; ++i) {
            const UnitRule<Unit>& rule = rules[i];
            if (*at != rule.from[0]) continue;
            if (rule.fromLength == 1) return &rule;
            if (left >= rule.fromLength && SameUnits(at + 1, rule.from + 1, rule.fromLength - 1))
                return &rule;
        }
        return nullptr;
    }
    UnitFinder<Unit> Finder(const Unit* text, std::size_t length) const {
        UnitFinder<Unit> finder(text, length);
        for (unsigned i = 0; i < count; ++i)
            if (IsNewFirst(i)) finder.AddFirst(rules[i].from[0]);
        const std::size_t size = rules[0].fromLength;
        if (count == 1 && size > 1) finder.RequireAt(size - 1, rules[0].from[size - 1]);
        return finder;
    }

  private:
    bool IsNewFirst(unsigned i) const {
        for (unsigned j = 0; j < i; ++j)
            if (rules[j].from[0] == rules[i].from[0]) return false;
        return true;
    }
};

// A match may begin at any position.
struct AnyPlace {
    template <class Unit>
    bool operator()(const Unit*) {
        return true;
    }
};

// Calls visit(position, rule) for the matches from first to last, without overlap. `starts` returns
// true if a match may begin at a position.
template <class Unit, class Starts, class Visitor>
inline void ForEachMatch(const Unit* text, std::size_t length, const UnitRules<Unit>& rules,
                         Starts starts, Visitor visit) {
    rules.Finder(text, length).ForEach(0, [&](std::size_t at) {
        const UnitRule<Unit>* rule = rules.At(text + at, length - at);
        if (!rule || !starts(text + at)) return at + 1;
        visit(at, *rule);
        return at + rule->fromLength;
    });
}

// Writes short pieces one after another. Bytes written beyond the end of a piece are overwritten by
// the next one.
template <class Unit>
class PieceWriter {
  public:
    PieceWriter(Unit* out, std::size_t size) : m_at(out), m_end(out + size) {}

    static constexpr std::size_t kAtOnce = 16 / sizeof(Unit);

    // `readable` is the number of units that may be read at the piece.
    void Put(const Unit* piece, std::size_t n, std::size_t readable) {
        const std::size_t whole = (n + kAtOnce - 1) / kAtOnce * kAtOnce;
        if (n <= 4 * kAtOnce && readable >= whole &&
            static_cast<std::size_t>(m_end - m_at) >= whole)
            for (std::size_t i = 0; i < n; i += kAtOnce)
                simd::Store(m_at + i, simd::Load(piece + i));
        else
            CopyUnits(m_at, piece, n);
        m_at += n;
    }

  private:
    Unit* m_at;
    Unit* const m_end;
};

template <class Unit>
struct Replaced {
    Unit* text;  // new, terminated; null if nothing matched or if allocation failed
    std::uint64_t length;
};

// Writes the text with its matches replaced.
template <class Unit>
class ReplacementWriter {
  public:
    ReplacementWriter(Unit* out, std::size_t size, const Unit* text, std::size_t length,
                      const UnitRules<Unit>& rules)
        : m_out(out, size), m_text(text), m_length(length), m_rules(rules) {
        for (unsigned i = 0; i < rules.count; ++i)
            if (rules.rules[i].toLength <= kShort)
                CopyUnits(m_short[i], rules.rules[i].to, rules.rules[i].toLength);
    }

    void Put(std::size_t at, const UnitRule<Unit>& rule) {
        m_out.Put(m_text + m_done, at - m_done, m_length - m_done);
        if (rule.toLength <= kShort)
            m_out.Put(m_short[&rule - m_rules.rules], rule.toLength, kShort);
        else
            m_out.Put(rule.to, rule.toLength, rule.toLength);
        m_done = at + rule.fromLength;
    }
    void PutRest() { m_out.Put(m_text + m_done, m_length - m_done, m_length - m_done); }

  private:
    static constexpr std::size_t kShort = PieceWriter<Unit>::kAtOnce;

    PieceWriter<Unit> m_out;
    const Unit* const m_text;
    const std::size_t m_length;
    const UnitRules<Unit>& m_rules;
    // Short replacement texts with room after them, so that each is copied in a single operation.
    Unit m_short[UnitFinder<Unit>::kMost][kShort] = {};
    std::size_t m_done = 0;
};

// The number of matches and the size of the resulting text. The first matches are recorded. A text
// with more of them is searched again.
template <class Unit>
struct CountedMatches {
    static constexpr std::size_t kNoted = 64;
    struct Match {
        std::size_t at;
        const UnitRule<Unit>* rule;
    };
    Match noted[kNoted];
    bool allNoted = true;
    std::size_t found = 0;
    std::uint64_t size;

    template <class Starts>
    CountedMatches(const Unit* text, std::size_t length, const UnitRules<Unit>& rules,
                   const Starts& starts)
        : size(length) {
        if (std::is_same_v<Starts, AnyPlace> && rules.count == 1 && length >= kLong &&
            rules.rules[0].fromLength == 1) {
            allNoted = false;
            found = rules.Finder(text, length).Count();
            size += (std::uint64_t{rules.rules[0].toLength} - 1) * found;
            return;
        }
        ForEachMatch(text, length, rules, starts, [&](std::size_t at, const UnitRule<Unit>& rule) {
            size += std::uint64_t{rule.toLength} - rule.fromLength;
            if (found < kNoted) noted[found] = {at, &rule};
            ++found;
        });
        allNoted = found <= kNoted;
    }

  private:
    static constexpr std::size_t kLong = 1024;  // minimum length of a text in which matches are
                                                // only counted
};

template <class Unit, class Starts>
Replaced<Unit> ReplaceUnits(const Unit* text, std::size_t length, const UnitRules<Unit>& rules,
                            const Starts& starts) {
    const CountedMatches<Unit> matches(text, length, rules, starts);
    if (matches.found == 0) return {nullptr, length};
    const std::uint64_t size = matches.size;
    auto* out = NewText<Unit>(size);
    if (!out) return {nullptr, length};

    ReplacementWriter<Unit> writer(out, static_cast<std::size_t>(size), text, length, rules);
    if (matches.allNoted)
        for (std::size_t i = 0; i < matches.found; ++i)
            writer.Put(matches.noted[i].at, *matches.noted[i].rule);
    else
        ForEachMatch(text, length, rules, starts,
                     [&](std::size_t at, const UnitRule<Unit>& rule) { writer.Put(at, rule); });
    writer.PutRest();
    out[size] = 0;
    return {out, size};
}

}  // namespace genutil
