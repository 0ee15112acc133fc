#include "evaluate/variant/Like.h"

#include <algorithm>
#include <span>
#include <vector>

// A pattern is parsed once into elements; a run of "*" parts it into segments. Between two stars a segment is put at
// the first place where it fits, and never moved again when a later one fails: only the last star need be lengthened.
// That makes the time text times pattern. The searches place the segments in the same way from either end.
namespace Formula {

namespace {

enum class Kind : std::uint8_t { Literal, Any_One, Digit, Any_Run, List, Excluding_List };

struct Element {
    Kind kind = Kind::Literal;
    char16_t letter = 0;
    QStringView list; ///< without brackets and "!"
};

struct Pattern {
    std::vector<Element> elements;
    Compare_Mode mode = Compare_Mode::Binary;
};

char16_t Folded(QChar c, Compare_Mode mode)
{
    return mode == Compare_Mode::Text ? c.toCaseFolded().unicode() : c.unicode();
}

// list := { letter "-" letter | letter }, where "-" at either end stands for itself
bool Is_In_List(QStringView list, QChar letter, Compare_Mode mode)
{
    const auto c = Folded(letter, mode);
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (i + 2 < list.size() && list[i + 1] == u'-') {
            if (c >= Folded(list[i], mode) && c <= Folded(list[i + 2], mode)) return true;
            i += 2;
        } else if (c == Folded(list[i], mode)) {
            return true;
        }
    }
    return false;
}

bool Fits(const Element& element, QChar c, Compare_Mode mode)
{
    switch (element.kind) {
    case Kind::Literal: return Folded(c, mode) == element.letter;
    case Kind::Any_One: return true;
    case Kind::Digit: return c >= u'0' && c <= u'9';
    case Kind::List: return Is_In_List(element.list, c, mode);
    case Kind::Excluding_List: return !Is_In_List(element.list, c, mode);
    case Kind::Any_Run: return false;
    }
    return false;
}

bool Has_Backward_Range(QStringView list, Compare_Mode mode)
{
    for (qsizetype i = 0; i + 2 < list.size(); ++i) {
        if (list[i + 1] != u'-') continue;
        if (Folded(list[i], mode) > Folded(list[i + 2], mode)) return true;
        i += 2;
    }
    return false;
}

// Reads "[...]" at `place` and moves behind it. "[]" adds nothing.
bool Take_List(QStringView text, qsizetype& place, Pattern& pattern)
{
    const auto close = text.indexOf(u']', place + 1);
    if (close < 0) return false;
    auto list = text.mid(place + 1, close - place - 1);
    place = close + 1;
    if (list.isEmpty()) return true;
    const bool excludes = list[0] == u'!' && list.size() > 1; // "[!]" is the character itself
    if (excludes) list = list.mid(1);
    if (Has_Backward_Range(list, pattern.mode)) return false;
    pattern.elements.push_back({excludes ? Kind::Excluding_List : Kind::List, 0, list});
    return true;
}

Evaluated<Pattern> Parse(QStringView text, Compare_Mode mode)
{
    Pattern pattern{{}, mode};
    for (qsizetype place = 0; place < text.size();) {
        const auto c = text[place];
        if (c == u'[') {
            if (!Take_List(text, place, pattern)) return Fails(Error_Number::Invalid_Pattern);
            continue;
        }
        const auto kind = c == u'*'   ? Kind::Any_Run
                          : c == u'?' ? Kind::Any_One
                          : c == u'#' ? Kind::Digit
                                      : Kind::Literal;
        const bool repeats =
            kind == Kind::Any_Run && !pattern.elements.empty() && pattern.elements.back().kind == Kind::Any_Run;
        if (!repeats) pattern.elements.push_back({kind, Folded(c, mode), {}});
        ++place;
    }
    return pattern;
}

bool Matches(const Pattern& pattern, QStringView text)
{
    const auto& elements = pattern.elements;
    std::size_t at = 0, behind_star = 0;
    qsizetype place = 0, star_place = -1;
    while (place < text.size()) {
        if (at < elements.size() && elements[at].kind == Kind::Any_Run) {
            behind_star = ++at;
            star_place = place;
        } else if (at < elements.size() && Fits(elements[at], text[place], pattern.mode)) {
            ++at;
            ++place;
        } else if (star_place >= 0) {
            at = behind_star;
            place = ++star_place;
        } else {
            return false;
        }
    }
    while (at < elements.size() && elements[at].kind == Kind::Any_Run) ++at;
    return at == elements.size();
}

/// The elements between two stars.
using Segment = std::span<const Element>;

std::vector<Segment> Segments_Of(const Pattern& pattern)
{
    std::vector<Segment> segments;
    const auto& elements = pattern.elements;
    for (std::size_t begin = 0; begin < elements.size();) {
        auto end = begin;
        while (end < elements.size() && elements[end].kind != Kind::Any_Run) ++end;
        if (end > begin) segments.push_back(Segment(elements).subspan(begin, end - begin));
        begin = end + 1;
    }
    return segments;
}

bool Stands_At(Segment segment, QStringView text, qsizetype place, Compare_Mode mode)
{
    for (std::size_t i = 0; i < segment.size(); ++i)
        if (!Fits(segment[i], text[place + qsizetype(i)], mode)) return false;
    return true;
}

// Puts the segments one behind the other as far left as they go, from `place` on: the smallest end, or -1.
qsizetype Leftmost_End(const std::vector<Segment>& segments, QStringView text, qsizetype place, Compare_Mode mode)
{
    for (const auto segment : segments) {
        const auto size = qsizetype(segment.size());
        while (place + size <= text.size() && !Stands_At(segment, text, place, mode)) ++place;
        if (place + size > text.size()) return -1;
        place += size;
    }
    return place;
}

// The same from the right, before `end` and not before `first`: the largest start, or -1.
qsizetype Rightmost_Start(const std::vector<Segment>& segments, QStringView text, qsizetype first, qsizetype end,
                          Compare_Mode mode)
{
    for (auto segment = segments.rbegin(); segment != segments.rend(); ++segment) {
        auto place = end - qsizetype(segment->size());
        while (place >= first && !Stands_At(*segment, text, place, mode)) --place;
        if (place < first) return -1;
        end = place;
    }
    return end;
}

} // namespace

Evaluated<bool> Is_Like(QStringView text, QStringView pattern, Compare_Mode mode)
{
    const auto parsed = Parse(pattern, mode);
    if (!parsed) return Fails(parsed.error());
    return Matches(*parsed, text);
}

Evaluated<Like_Place> First_Like(QStringView text, QStringView pattern, std::int64_t position)
{
    const auto parsed = Parse(pattern, Compare_Mode::Text);
    if (!parsed) return Fails(parsed.error());
    const auto segments = Segments_Of(*parsed);
    const auto first = qsizetype(std::max<std::int64_t>(position, 1) - 1);
    if (first >= text.size()) return Like_Place{};
    if (segments.empty()) return Like_Place{first + 1, first + 1};
    const auto end = Leftmost_End(segments, text, first, Compare_Mode::Text);
    if (end < 0) return Like_Place{};
    return Like_Place{Rightmost_Start(segments, text, first, end, Compare_Mode::Text) + 1, end};
}

Evaluated<Like_Place> Last_Like(QStringView text, QStringView pattern, std::int64_t position)
{
    const auto parsed = Parse(pattern, Compare_Mode::Text);
    if (!parsed) return Fails(parsed.error());
    const auto segments = Segments_Of(*parsed);
    const auto part = position <= 0 || position >= text.size() ? text : text.left(qsizetype(position));
    if (part.isEmpty()) return Like_Place{};
    if (segments.empty()) return Like_Place{part.size(), part.size()};
    const auto start = Rightmost_Start(segments, part, 0, part.size(), Compare_Mode::Text);
    if (start < 0) return Like_Place{};
    return Like_Place{start + 1, Leftmost_End(segments, part, start, Compare_Mode::Text)};
}

} // namespace Formula
