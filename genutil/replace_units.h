// Replacement in text of bytes or of 16-bit characters: counted first, then written into a buffer
// of the exact size.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/string_storage.h"
#include "genutil/unit_search.h"

namespace genutil {

template <class Unit>
struct UnitRule {
    const Unit* from;
    std::size_t fromLength;  // at least 1
    const Unit* to;
    std::size_t toLength;
};

// Every place is one where a match may begin.
struct AnyPlace {
    bool operator()(std::size_t) { return true; }
};

// Visits the matches of a few rules from first to last, without overlap. `Starts` is asked whether
// a match may begin at a place.
template <class Unit, class Starts>
class Matches {
  public:
    Matches(const Unit* text, std::size_t length, const UnitRule<Unit>* rules, unsigned count,
            Starts starts)
        : m_text(text),
          m_length(length),
          m_rules(rules),
          m_count(count),
          m_finder(text, length),
          m_starts(starts) {
        for (unsigned i = 0; i < count; ++i)
            if (IsNewFirst(i)) m_finder.AddFirst(rules[i].from[0]);
        const std::size_t size = rules[0].fromLength;
        if (count == 1 && size > 1) m_finder.RequireAt(size - 1, rules[0].from[size - 1]);
    }

    // The next match; null behind the last.
    const UnitRule<Unit>* Next() {
        for (std::size_t at = m_behind; (at = m_finder.Next(at)) < m_length; ++at) {
            const UnitRule<Unit>* rule = RuleAt(at);
            if (!rule || !m_starts(at)) continue;
            m_at = at;
            m_behind = at + rule->fromLength;
            return rule;
        }
        return nullptr;
    }
    std::size_t At() const { return m_at; }
    std::size_t Behind() const { return m_behind; }

  private:
    bool IsNewFirst(unsigned i) const {
        for (unsigned j = 0; j < i; ++j)
            if (m_rules[j].from[0] == m_rules[i].from[0]) return false;
        return true;
    }
    const UnitRule<Unit>* RuleAt(std::size_t at) const {
        for (unsigned i = 0; i < m_count; ++i) {
            const UnitRule<Unit>& rule = m_rules[i];
            if (m_text[at] != rule.from[0] || m_length - at < rule.fromLength) continue;
            if (rule.fromLength == 1 ||
                SameUnits(m_text + at + 1, rule.from + 1, rule.fromLength - 1))
                return &rule;
        }
        return nullptr;
    }

    const Unit* const m_text;
    const std::size_t m_length;
    const UnitRule<Unit>* const m_rules;
    const unsigned m_count;
    UnitFinder<Unit> m_finder;
    Starts m_starts;
    std::size_t m_at = 0, m_behind = 0;
};

// Puts short pieces one behind another; what one writes beyond its end the next overwrites.
template <class Unit>
class PieceWriter {
  public:
    PieceWriter(Unit* out, std::size_t size) : m_at(out), m_end(out + size) {}

    static constexpr std::size_t kAtOnce = 16 / sizeof(Unit);

    // `readable` units may be read where the piece is.
    void Put(const Unit* piece, std::size_t n, std::size_t readable) {
        if (n <= kAtOnce && readable >= kAtOnce &&
            static_cast<std::size_t>(m_end - m_at) >= kAtOnce)
            _mm_storeu_si128(reinterpret_cast<__m128i*>(m_at),
                             _mm_loadu_si128(reinterpret_cast<const __m128i*>(piece)));
        else
            CopyUnits(m_at, piece, n);
        m_at += n;
    }

  private:
    Unit* m_at;
    Unit* const m_end;
};

// A rule's new text with room behind it, so that a short one is read whole.
template <class Unit>
class ReadablePiece {
  public:
    void Take(const UnitRule<Unit>& rule) {
        m_isShort = rule.toLength <= PieceWriter<Unit>::kAtOnce;
        if (m_isShort) CopyUnits(m_units, rule.to, rule.toLength);
    }
    void PutTo(PieceWriter<Unit>& writer, const UnitRule<Unit>& rule) const {
        if (m_isShort)
            writer.Put(m_units, rule.toLength, PieceWriter<Unit>::kAtOnce);
        else
            writer.Put(rule.to, rule.toLength, rule.toLength);
    }

  private:
    Unit m_units[PieceWriter<Unit>::kAtOnce] = {};
    bool m_isShort = false;
};

template <class Unit>
struct Replaced {
    Unit* text;  // new, terminated; null when nothing matched, and when memory ran out
    std::uint64_t length;
};

template <class Unit, class Starts>
Replaced<Unit> ReplaceUnits(const Unit* text, std::size_t length, const UnitRule<Unit>* rules,
                            unsigned count, const Starts& starts) {
    std::uint64_t size = length;
    bool found = false;
    Matches<Unit, Starts> counted(text, length, rules, count, starts);
    while (const UnitRule<Unit>* rule = counted.Next()) {
        size += std::uint64_t{rule->toLength} - rule->fromLength;
        found = true;
    }
    if (!found) return {nullptr, length};
    auto* out = NewText<Unit>(size);
    if (!out) return {nullptr, length};

    ReadablePiece<Unit> pieces[UnitFinder<Unit>::kMost];
    for (unsigned i = 0; i < count; ++i) pieces[i].Take(rules[i]);
    PieceWriter<Unit> writer(out, static_cast<std::size_t>(size));
    Matches<Unit, Starts> matches(text, length, rules, count, starts);
    for (std::size_t done = 0;; done = matches.Behind()) {
        const UnitRule<Unit>* rule = matches.Next();
        const std::size_t at = rule ? matches.At() : length;
        writer.Put(text + done, at - done, length - done);
        if (!rule) break;
        pieces[rule - rules].PutTo(writer, *rule);
    }
    out[size] = 0;
    return {out, size};
}

}  // namespace genutil
