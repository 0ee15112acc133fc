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
    bool is_null = false; ///< one of the texts is Null, and so is the position; a Null anywhere else is an error
};

Evaluated<Search> Search_Of(Arguments arguments)
{
    const bool mode_is_third = arguments.size() == 3 && !Is_Number(arguments[0]) && arguments[0].Is_String() &&
                               arguments[1].Is_String() && Is_Number(arguments[2]);
    const std::size_t text_at = arguments.size() == 2 || mode_is_third ? 0 : 1;
    Search search;
    const auto mode = Mode_At(arguments, mode_is_third ? 2 : 3);
    if (!mode) return Fails(mode.error());
    search.mode = *mode;
    if (text_at == 1) {
        const auto start = To_Long(arguments[0]);
        if (!start) return Fails(start.error());
        if (*start < 1) return Fails(Error_Number::Invalid_Call);
        search.start = *start;
    }
    search.is_null = arguments[text_at].Is_Null() || arguments[text_at + 1].Is_Null();
    if (search.is_null) return search;
    const auto text = To_Text(arguments[text_at]), find = To_Text(arguments[text_at + 1]);
    if (!text) return Fails(text.error());
    if (!find) return Fails(find.error());
    search.text = *text;
    search.find = *find;
    return search;
}

std::int32_t Position_Of(const Search& search)
{
    if (search.start > search.text.size()) return 0;
    if (search.find.isEmpty()) return search.start;
    const QStringMatcher matcher(search.find, Sensitivity(search.mode));
    return std::int32_t(matcher.indexIn(search.text, search.start - 1) + 1);
}

std::int32_t Byte_Position_Of(const Search& search)
{
    const auto text = Bytes_Of(search.mode == Compare_Mode::Text ? search.text.toCaseFolded() : search.text);
    const auto find = Bytes_Of(search.mode == Compare_Mode::Text ? search.find.toCaseFolded() : search.find);
    if (search.start > text.size()) return 0;
    return std::int32_t(text.indexOf(find, search.start - 1) + 1);
}

/// Where the pieces of a text end, one after the other.
class Piece_Ends {
public:
    /// count  the most pieces, of which the last keeps the rest; -1: all
    Piece_Ends(const QString& text, const QString& delimiter, std::int32_t count, Compare_Mode mode)
        : text_(text), matcher_(delimiter, Sensitivity(mode)), left_(count)
    {}

    /// From the beginning of a piece.
    qsizetype End_Of(qsizetype begin)
    {
        const bool is_last = matcher_.pattern().isEmpty() || left_ == 1;
        const auto end = is_last ? -1 : matcher_.indexIn(text_, begin);
        if (left_ > 0) --left_;
        return end < 0 ? text_.size() : end;
    }

private:
    const QString& text_;
    QStringMatcher matcher_;
    std::int32_t left_;
};

std::int64_t Piece_Count(Piece_Ends ends, const QString& text, const QString& delimiter)
{
    std::int64_t pieces = 1;
    for (auto end = ends.End_Of(0); end < text.size(); end = ends.End_Of(end + delimiter.size())) ++pieces;
    return pieces;
}

/// The stretches between delimiters. They are counted before they are cut out, so that there is room for all of them.
Evaluated<std::vector<Variant>> Pieces_Of(Library_Context& context, const QString& text, const QString& delimiter,
                                          Piece_Ends ends)
{
    const auto count = Piece_Count(ends, text, delimiter);
    if (count > Current_Limits().formula_array_elements) return Fails(Error_Number::Out_Of_Memory);
    const auto room = context.memory.Room_For_List(count, text.size());
    if (room != Error_Number::None) return Fails(room);
    std::vector<Variant> pieces;
    pieces.reserve(std::size_t(count));
    for (qsizetype begin = 0; std::int64_t(pieces.size()) < count; begin += delimiter.size()) {
        const auto end = ends.End_Of(begin);
        pieces.push_back(Variant(text.mid(begin, end - begin)));
        begin = end;
    }
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
    const auto search = Search_Of(arguments);
    FORMULA_CHECK(search);
    return search->is_null ? Yield_Null(result) : Yield(result, Position_Of(*search));
}

Error_Number Run_InStrB(Library_Context&, Arguments arguments, Variant& result)
{
    const auto search = Search_Of(arguments);
    FORMULA_CHECK(search);
    return search->is_null ? Yield_Null(result) : Yield(result, Byte_Position_Of(*search));
}

Error_Number Run_InStrRev(Library_Context&, Arguments arguments, Variant& result)
{
    const auto start = Long_At(arguments, 2, -1);
    FORMULA_CHECK(start);
    const auto mode = Mode_At(arguments, 3);
    FORMULA_CHECK(mode);
    if (*start == 0 || *start < -1) return Error_Number::Invalid_Call;
    if (Any_Is_Null(arguments)) return Yield_Null(result);
    const auto text = Text_At(arguments, 0), find = Text_At(arguments, 1);
    FORMULA_CHECK(text);
    FORMULA_CHECK(find);
    if (text->isEmpty() || *start > text->size()) return Yield(result, std::int32_t(0));
    const auto end = *start == -1 ? std::int32_t(text->size()) : *start;
    if (find->isEmpty()) return Yield(result, end);
    const auto from = qsizetype(end) - find->size();
    if (from < 0) return Yield(result, std::int32_t(0));
    return Yield(result, std::int32_t(text->lastIndexOf(*find, from, Sensitivity(*mode)) + 1));
}

// The result begins at the start: what stands before it is gone.
Error_Number Run_Replace(Library_Context& context, Arguments arguments, Variant& result)
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
    if (find->isEmpty()) return Yield(result, text->mid(*start - 1));
    const QStringMatcher matcher(*find, Sensitivity(*mode));
    QString changed;
    qsizetype begin = *start - 1;
    for (std::int32_t done = 0; *count < 0 || done < *count; ++done) {
        const auto place = matcher.indexIn(*text, begin);
        if (place < 0) break;
        const auto rest = text->size() - place - find->size();
        const auto problem = Check_Room(context, changed.size() + place - begin + with->size() + rest);
        if (problem != Error_Number::None) return problem;
        changed += QStringView(*text).mid(begin, place - begin);
        changed += *with;
        begin = place + find->size();
    }
    if (begin == *start - 1) return Yield(result, text->mid(begin));
    changed += QStringView(*text).mid(begin);
    return Yield(result, changed);
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

Error_Number Run_Split(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto text = Text_At(arguments, 0), delimiter = Text_At(arguments, 1, " ");
    FORMULA_CHECK(text);
    FORMULA_CHECK(delimiter);
    const auto count = Long_At(arguments, 2, -1);
    FORMULA_CHECK(count);
    const auto mode = Mode_At(arguments, 3);
    FORMULA_CHECK(mode);
    if (*count < -1) return Error_Number::Invalid_Call;
    if (text->isEmpty() || *count == 0) {
        result = Make_List({});
        return Error_Number::None;
    }
    auto pieces = Pieces_Of(context, *text, *delimiter, Piece_Ends(*text, *delimiter, *count, *mode));
    FORMULA_CHECK(pieces);
    result = Make_List(std::move(*pieces));
    return Error_Number::None;
}

Error_Number Run_Join(Library_Context& context, Arguments arguments, Variant& result)
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
        const auto problem = Check_Room(context, joined.size() + delimiter->size() + text->size());
        if (problem != Error_Number::None) return problem;
        if (!is_first) joined += *delimiter;
        is_first = false;
        joined += *text;
    }
    return Yield(result, joined);
}

Error_Number Run_Filter(Library_Context& context, Arguments arguments, Variant& result)
{
    if (!arguments[0].Is_Array()) return Error_Number::Type_Mismatch;
    if (arguments[0].Array().bounds.size() != 1) return Error_Number::Invalid_Call;
    const auto match = Text_At(arguments, 1);
    FORMULA_CHECK(match);
    const auto includes = Boolean_At(arguments, 2, true);
    FORMULA_CHECK(includes);
    const auto mode = Mode_At(arguments, 3);
    FORMULA_CHECK(mode);
    const auto& elements = arguments[0].Array().elements;
    const auto room = context.memory.Room_For_List(std::int64_t(elements.size()), 0);
    if (room != Error_Number::None) return room;
    std::vector<Variant> kept;
    for (const auto& element : elements) {
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
