#include "evaluate/library/Arguments.h"
#include "evaluate/library/Built_In_Routines.h"
#include "evaluate/variant/Like.h"
#include "evaluate/variant/Variant_Array.h"
#include "frame/files/Limits.h"

#include <QtCore/QStringMatcher>

// Finding and replacing in texts, texts to lists and back.
namespace Formula {

namespace {

bool Any_Is_Null(Arguments arguments)
{
    return std::any_of(arguments.begin(), arguments.end(), [](const Variant& value) { return value.Is_Null(); });
}

Qt::CaseSensitivity Sensitivity(Compare_Mode mode)
{
    return mode == Compare_Mode::Text ? Qt::CaseInsensitive : Qt::CaseSensitive;
}

bool Is_Number(const Variant& value)
{
    switch (value.Type()) {
    case Variant_Type::Integer:
    case Variant_Type::Long:
    case Variant_Type::Single:
    case Variant_Type::Double: return true;
    default: return false;
    }
}

/// What InStr looks for and where. Two texts and a number behind them are texts and a compare mode; otherwise three
/// arguments are a start and two texts.
struct Search {
    QString text, find;
    std::int32_t start = 1;
    Compare_Mode mode = Compare_Mode::Binary;
};

Evaluated<Search> Search_Of(Arguments arguments)
{
    const bool mode_is_third = arguments.size() == 3 && !Is_Number(arguments[0]) && arguments[0].Is_String() &&
                               arguments[1].Is_String() && Is_Number(arguments[2]);
    const std::size_t text_at = arguments.size() == 2 || mode_is_third ? 0 : 1;
    Search search;
    const auto text = To_Text(arguments[text_at]), find = To_Text(arguments[text_at + 1]);
    if (!text) return Fails(text.error());
    if (!find) return Fails(find.error());
    const auto mode = Mode_At(arguments, mode_is_third ? 2 : 3);
    if (!mode) return Fails(mode.error());
    if (text_at == 1) {
        const auto start = To_Long(arguments[0]);
        if (!start) return Fails(start.error());
        if (*start < 1) return Fails(Error_Number::Invalid_Call);
        search.start = *start;
    }
    search.text = *text;
    search.find = *find;
    search.mode = *mode;
    return search;
}

std::int32_t Position_Of(const Search& search)
{
    if (search.text.isEmpty() || search.start > search.text.size()) return 0;
    if (search.find.isEmpty()) return search.start;
    const QStringMatcher matcher(search.find, Sensitivity(search.mode));
    return std::int32_t(matcher.indexIn(search.text, search.start - 1) + 1);
}

std::int32_t Byte_Position_Of(const Search& search)
{
    const auto text = Bytes_Of(search.mode == Compare_Mode::Text ? search.text.toCaseFolded() : search.text);
    const auto find = Bytes_Of(search.mode == Compare_Mode::Text ? search.find.toCaseFolded() : search.find);
    if (text.isEmpty() || search.start > text.size()) return 0;
    if (find.isEmpty()) return search.start;
    return std::int32_t(text.indexOf(find, search.start - 1) + 1);
}

/// The stretches between delimiters, at most `count` of them (-1: all); the last one keeps the rest.
Evaluated<std::vector<Variant>> Pieces_Of(const QString& text, const QString& delimiter, std::int32_t count,
                                          Compare_Mode mode)
{
    std::vector<Variant> pieces;
    if (text.isEmpty() || count == 0) return pieces;
    const QStringMatcher matcher(delimiter, Sensitivity(mode));
    qsizetype begin = 0;
    while (!delimiter.isEmpty() && (count < 0 || std::int64_t(pieces.size()) + 1 < count)) {
        const auto end = matcher.indexIn(text, begin);
        if (end < 0) break;
        if (std::int64_t(pieces.size()) >= Current_Limits().formula_array_elements)
            return Fails(Error_Number::Out_Of_Memory);
        pieces.push_back(Variant(text.mid(begin, end - begin)));
        begin = end + delimiter.size();
    }
    pieces.push_back(Variant(text.mid(begin)));
    return pieces;
}

/// A set of characters that answers at once, however long its text is.
class Character_Set {
public:
    explicit Character_Set(const QString& text) : members_(65536)
    {
        for (const auto c : text) members_[c.unicode()] = true;
    }
    bool contains(QChar c) const { return members_[c.unicode()]; }

private:
    std::vector<bool> members_;
};

/// The position of the first character at or behind a start that is in the set, or is not in it.
std::int32_t Scan_Forward(const QString& text, const Character_Set& set, std::int32_t start, bool wants_member)
{
    for (auto i = qsizetype(std::max(start, 1)) - 1; i < text.size(); ++i)
        if (set.contains(text[i]) == wants_member) return std::int32_t(i + 1);
    return 0;
}

std::int32_t Scan_Backward(const QString& text, const Character_Set& set, std::int32_t start, bool wants_member)
{
    const auto first = start < 1 || start > text.size() ? text.size() : qsizetype(start);
    for (auto i = first - 1; i >= 0; --i)
        if (set.contains(text[i]) == wants_member) return std::int32_t(i + 1);
    return 0;
}

template <class Scanner>
Error_Number Scanned(Arguments arguments, Variant& result, bool wants_member, std::int32_t standard, Scanner scan)
{
    const auto text = Text_At(arguments, 0), set = Text_At(arguments, 1);
    FORMULA_CHECK(text);
    FORMULA_CHECK(set);
    const auto start = Long_At(arguments, 2, standard);
    FORMULA_CHECK(start);
    return Yield(result, scan(*text, Character_Set(*set), *start, wants_member));
}

template <class Finder>
Error_Number Found_Like(Arguments arguments, Variant& result, std::int32_t standard, Finder find,
                        std::int64_t Like_Place::*side)
{
    const auto text = Text_At(arguments, 0), pattern = Text_At(arguments, 1);
    FORMULA_CHECK(text);
    FORMULA_CHECK(pattern);
    const auto position = Long_At(arguments, 2, standard);
    FORMULA_CHECK(position);
    const auto place = find(*text, *pattern, *position);
    FORMULA_CHECK(place);
    return Yield(result, std::int32_t((*place).*side));
}

} // namespace

Error_Number Run_InStr(Library_Context&, Arguments arguments, Variant& result)
{
    if (Any_Is_Null(arguments)) return Yield_Null(result);
    const auto search = Search_Of(arguments);
    FORMULA_CHECK(search);
    return Yield(result, Position_Of(*search));
}

Error_Number Run_InStrB(Library_Context&, Arguments arguments, Variant& result)
{
    if (Any_Is_Null(arguments)) return Yield_Null(result);
    const auto search = Search_Of(arguments);
    FORMULA_CHECK(search);
    return Yield(result, Byte_Position_Of(*search));
}

Error_Number Run_InStrRev(Library_Context&, Arguments arguments, Variant& result)
{
    if (Any_Is_Null(arguments)) return Yield_Null(result);
    const auto text = Text_At(arguments, 0), find = Text_At(arguments, 1);
    FORMULA_CHECK(text);
    FORMULA_CHECK(find);
    const auto start = Long_At(arguments, 2, -1);
    FORMULA_CHECK(start);
    const auto mode = Mode_At(arguments, 3);
    FORMULA_CHECK(mode);
    if (*start == 0 || *start < -1) return Error_Number::Invalid_Call;
    if (text->isEmpty() || *start > text->size()) return Yield(result, std::int32_t(0));
    const auto end = *start == -1 ? std::int32_t(text->size()) : *start;
    if (find->isEmpty()) return Yield(result, end);
    const auto from = qsizetype(end) - find->size();
    if (from < 0) return Yield(result, std::int32_t(0));
    return Yield(result, std::int32_t(text->lastIndexOf(*find, from, Sensitivity(*mode)) + 1));
}

// The result begins at the start: what stands before it is gone.
Error_Number Run_Replace(Library_Context&, Arguments arguments, Variant& result)
{
    const auto text = Text_At(arguments, 0), find = Text_At(arguments, 1), with = Text_At(arguments, 2);
    FORMULA_CHECK(text);
    FORMULA_CHECK(find);
    FORMULA_CHECK(with);
    const auto start = Long_At(arguments, 3, 1), count = Long_At(arguments, 4, -1);
    FORMULA_CHECK(start);
    FORMULA_CHECK(count);
    const auto mode = Mode_At(arguments, 5);
    FORMULA_CHECK(mode);
    if (*start < 1 || *count < -1) return Error_Number::Invalid_Call;
    if (find->isEmpty() || *count == 0) return Yield(result, text->mid(*start - 1));
    const QStringMatcher matcher(*find, Sensitivity(*mode));
    QString changed;
    qsizetype begin = *start - 1;
    for (std::int32_t done = 0; *count < 0 || done < *count; ++done) {
        const auto place = matcher.indexIn(*text, begin);
        if (place < 0) break;
        changed += QStringView(*text).mid(begin, place - begin);
        changed += *with;
        begin = place + find->size();
        const auto problem = Check_Length(changed.size());
        if (problem != Error_Number::None) return problem;
    }
    return Yield_Text(result, changed + text->mid(begin));
}

Error_Number Run_StrComp(Library_Context&, Arguments arguments, Variant& result)
{
    const auto mode = Mode_At(arguments, 2);
    FORMULA_CHECK(mode);
    if (Any_Is_Null(arguments)) return Yield_Null(result);
    const auto left = Text_At(arguments, 0), right = Text_At(arguments, 1);
    FORMULA_CHECK(left);
    FORMULA_CHECK(right);
    return Yield(result, std::int16_t(Compare_Text(*left, *right, *mode)));
}

Error_Number Run_Split(Library_Context&, Arguments arguments, Variant& result)
{
    const auto text = Text_At(arguments, 0), delimiter = Text_At(arguments, 1, " ");
    FORMULA_CHECK(text);
    FORMULA_CHECK(delimiter);
    const auto count = Long_At(arguments, 2, -1);
    FORMULA_CHECK(count);
    const auto mode = Mode_At(arguments, 3);
    FORMULA_CHECK(mode);
    if (*count < -1) return Error_Number::Invalid_Call;
    auto pieces = Pieces_Of(*text, *delimiter, *count, *mode);
    FORMULA_CHECK(pieces);
    result = Make_List(std::move(*pieces));
    return Error_Number::None;
}

Error_Number Run_Join(Library_Context&, Arguments arguments, Variant& result)
{
    if (!arguments[0].Is_Array()) return Error_Number::Type_Mismatch;
    if (arguments[0].Array().bounds.size() != 1) return Error_Number::Invalid_Call;
    const auto delimiter = Text_At(arguments, 1, " ");
    FORMULA_CHECK(delimiter);
    QString joined;
    bool is_first = true;
    for (const auto& element : arguments[0].Array().elements) {
        const auto text = To_Text(element);
        FORMULA_CHECK(text);
        if (!is_first) joined += *delimiter;
        is_first = false;
        joined += *text;
        const auto problem = Check_Length(joined.size());
        if (problem != Error_Number::None) return problem;
    }
    return Yield(result, joined);
}

Error_Number Run_Filter(Library_Context&, Arguments arguments, Variant& result)
{
    if (!arguments[0].Is_Array()) return Error_Number::Type_Mismatch;
    if (arguments[0].Array().bounds.size() != 1) return Error_Number::Invalid_Call;
    const auto match = Text_At(arguments, 1);
    FORMULA_CHECK(match);
    const auto includes = Boolean_At(arguments, 2, true);
    FORMULA_CHECK(includes);
    const auto mode = Mode_At(arguments, 3);
    FORMULA_CHECK(mode);
    std::vector<Variant> kept;
    for (const auto& element : arguments[0].Array().elements) {
        const auto text = To_Text(element);
        FORMULA_CHECK(text);
        if (text->contains(*match, Sensitivity(*mode)) == *includes) kept.push_back(Variant(*text));
    }
    result = Make_List(std::move(kept));
    return Error_Number::None;
}

Error_Number Run_Scan(Library_Context&, Arguments arguments, Variant& result)
{
    return Scanned(arguments, result, true, 1, Scan_Forward);
}

Error_Number Run_Span(Library_Context&, Arguments arguments, Variant& result)
{
    return Scanned(arguments, result, false, 1, Scan_Forward);
}

Error_Number Run_ScanRev(Library_Context&, Arguments arguments, Variant& result)
{
    return Scanned(arguments, result, true, 0, Scan_Backward);
}

Error_Number Run_SpanRev(Library_Context&, Arguments arguments, Variant& result)
{
    return Scanned(arguments, result, false, 0, Scan_Backward);
}

Error_Number Run_FirstLikeBegin(Library_Context&, Arguments arguments, Variant& result)
{
    return Found_Like(arguments, result, 1, First_Like, &Like_Place::begin);
}

Error_Number Run_FirstLikeEnd(Library_Context&, Arguments arguments, Variant& result)
{
    return Found_Like(arguments, result, 1, First_Like, &Like_Place::end);
}

Error_Number Run_LastLikeBegin(Library_Context&, Arguments arguments, Variant& result)
{
    return Found_Like(arguments, result, 0, Last_Like, &Like_Place::begin);
}

Error_Number Run_LastLikeEnd(Library_Context&, Arguments arguments, Variant& result)
{
    return Found_Like(arguments, result, 0, Last_Like, &Like_Place::end);
}

} // namespace Formula
