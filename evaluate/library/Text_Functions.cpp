#include "evaluate/library/Arguments.h"
#include "evaluate/library/Built_In_Routines.h"

// Parts of texts, cases, blanks and codes. A Null text stays Null where the classic library has it so.
namespace Formula {

namespace {

template <class Change>
Error_Number Changed_Text(Arguments arguments, Variant& result, Change change)
{
    if (arguments[0].Is_Null()) return Yield_Null(result);
    const auto text = To_Text(arguments[0]);
    FORMULA_CHECK(text);
    return Yield_Text(result, change(*text));
}

template <class Map>
QString Mapped(QString text, Map map)
{
    for (auto& c : text) c = map(c);
    return text;
}

QString Without_Leading_Blanks(const QString& text)
{
    qsizetype begin = 0;
    while (begin < text.size() && text[begin] == u' ') ++begin;
    return text.mid(begin);
}

QString Without_Trailing_Blanks(const QString& text)
{
    auto end = text.size();
    while (end > 0 && text[end - 1] == u' ') --end;
    return text.left(end);
}

/// A text and a count that must not be negative. A Null text has made the result already.
template <class Take>
Error_Number Text_And_Count(Arguments arguments, Variant& result, Take take)
{
    if (arguments[0].Is_Null()) return Yield_Null(result);
    const auto text = To_Text(arguments[0]);
    FORMULA_CHECK(text);
    const auto count = Long_At(arguments, 1);
    FORMULA_CHECK(count);
    if (*count < 0) return Error_Number::Invalid_Call;
    return Yield(result, take(*text, *count));
}

/// Start (from 1) and length of Mid; no length means all.
template <class Take>
Error_Number Middle(Arguments arguments, Variant& result, Take take)
{
    if (arguments[0].Is_Null()) return Yield_Null(result);
    const auto text = To_Text(arguments[0]);
    FORMULA_CHECK(text);
    const auto start = Long_At(arguments, 1, 1);
    FORMULA_CHECK(start);
    const auto length = Long_At(arguments, 2, 0x7FFF'FFFF);
    FORMULA_CHECK(length);
    if (*start < 1 || *length < 0) return Error_Number::Invalid_Call;
    return Yield(result, take(*text, *start - 1, *length));
}

Evaluated<QString> First_Character(Arguments arguments)
{
    auto text = To_Text(arguments[0]);
    if (text && text->isEmpty()) return Fails(Error_Number::Invalid_Call);
    return text;
}

Error_Number Character_From(Arguments arguments, Variant& result, std::int32_t lowest, std::int32_t highest,
                            QChar (*make)(int))
{
    const auto code = Long_At(arguments, 0);
    FORMULA_CHECK(code);
    if (*code < lowest || *code > highest) return Error_Number::Invalid_Call;
    return Yield(result, QString(make(*code)));
}

struct Middle_Place {
    qsizetype start = 0, length = 0;
};

// The stretch that the Mid statement replaces: inside the text, no longer than the value.
Evaluated<Middle_Place> Middle_Place_Of(qsizetype size, qsizetype value_size, const Variant& start,
                                        const Variant* length)
{
    const auto from = To_Long(start);
    if (!from) return Fails(from.error());
    auto count = Evaluated<std::int32_t>(0x7FFF'FFFF);
    if (length) count = To_Long(*length);
    if (!count) return Fails(count.error());
    if (*from < 1 || *from > size || *count < 0) return Fails(Error_Number::Invalid_Call);
    const auto most = std::min<qsizetype>(value_size, size - (*from - 1));
    return Middle_Place{*from - 1, std::min<qsizetype>(*count, most)};
}

} // namespace

Error_Number Run_LCase(Library_Context&, Arguments arguments, Variant& result)
{
    return Changed_Text(arguments, result,
                        [](const QString& text) { return Mapped(text, [](QChar c) { return c.toLower(); }); });
}

Error_Number Run_UCase(Library_Context&, Arguments arguments, Variant& result)
{
    return Changed_Text(arguments, result,
                        [](const QString& text) { return Mapped(text, [](QChar c) { return c.toUpper(); }); });
}

Error_Number Run_LTrim(Library_Context&, Arguments arguments, Variant& result)
{
    return Changed_Text(arguments, result, Without_Leading_Blanks);
}

Error_Number Run_RTrim(Library_Context&, Arguments arguments, Variant& result)
{
    return Changed_Text(arguments, result, Without_Trailing_Blanks);
}

Error_Number Run_Trim(Library_Context&, Arguments arguments, Variant& result)
{
    return Changed_Text(arguments, result,
                        [](const QString& text) { return Without_Trailing_Blanks(Without_Leading_Blanks(text)); });
}

Error_Number Run_StrReverse(Library_Context&, Arguments arguments, Variant& result)
{
    auto text = To_Text(arguments[0]);
    FORMULA_CHECK(text);
    std::reverse(text->begin(), text->end());
    return Yield(result, *text);
}

Error_Number Run_Left(Library_Context&, Arguments arguments, Variant& result)
{
    return Text_And_Count(arguments, result, [](const QString& text, int count) { return text.left(count); });
}

Error_Number Run_Right(Library_Context&, Arguments arguments, Variant& result)
{
    return Text_And_Count(arguments, result, [](const QString& text, int count) { return text.right(count); });
}

Error_Number Run_LeftB(Library_Context&, Arguments arguments, Variant& result)
{
    return Text_And_Count(arguments, result,
                          [](const QString& text, int count) { return Text_Of_Bytes(Bytes_Of(text).left(count)); });
}

Error_Number Run_RightB(Library_Context&, Arguments arguments, Variant& result)
{
    return Text_And_Count(arguments, result,
                          [](const QString& text, int count) { return Text_Of_Bytes(Bytes_Of(text).right(count)); });
}

Error_Number Run_Mid(Library_Context&, Arguments arguments, Variant& result)
{
    return Middle(arguments, result,
                  [](const QString& text, int start, int length) { return text.mid(start, length); });
}

Error_Number Run_MidB(Library_Context&, Arguments arguments, Variant& result)
{
    return Middle(arguments, result, [](const QString& text, int start, int length) {
        return Text_Of_Bytes(Bytes_Of(text).mid(start, length));
    });
}

Error_Number Run_Len(Library_Context&, Arguments arguments, Variant& result)
{
    if (arguments[0].Is_Null()) return Yield_Null(result);
    const auto text = To_Text(arguments[0]);
    FORMULA_CHECK(text);
    return Yield(result, std::int32_t(text->size()));
}

Error_Number Run_LenB(Library_Context&, Arguments arguments, Variant& result)
{
    if (arguments[0].Is_Null()) return Yield_Null(result);
    const auto text = To_Text(arguments[0]);
    FORMULA_CHECK(text);
    return Yield(result, std::int32_t(text->size() * 2));
}

Error_Number Run_Space(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto count = Long_At(arguments, 0);
    FORMULA_CHECK(count);
    if (*count < 0) return Error_Number::Invalid_Call;
    const auto problem = Check_Room(context, *count);
    return problem == Error_Number::None ? Yield(result, QString(*count, u' ')) : problem;
}

// The character is the first one of a text, or a code, of which the low byte counts.
Error_Number Run_String(Library_Context& context, Arguments arguments, Variant& result)
{
    if (arguments[0].Is_Null() || arguments[1].Is_Null()) return Yield_Null(result);
    const auto count = Long_At(arguments, 0);
    FORMULA_CHECK(count);
    if (*count < 0) return Error_Number::Invalid_Call;
    const auto problem = Check_Room(context, *count);
    if (problem != Error_Number::None) return problem;
    if (arguments[1].Is_String()) {
        const auto& text = arguments[1].Text();
        return text.isEmpty() ? Error_Number::Invalid_Call : Yield(result, QString(*count, text[0]));
    }
    const auto code = Long_At(arguments, 1);
    FORMULA_CHECK(code);
    return Yield(result, QString(*count, Character_Of_Code(*code & 255)));
}

Error_Number Run_Asc(Library_Context&, Arguments arguments, Variant& result)
{
    const auto text = First_Character(arguments);
    FORMULA_CHECK(text);
    return Yield(result, std::int16_t(Code_Of_Character((*text)[0])));
}

Error_Number Run_AscB(Library_Context&, Arguments arguments, Variant& result)
{
    const auto text = First_Character(arguments);
    FORMULA_CHECK(text);
    return Yield(result, std::int16_t((*text)[0].unicode() & 255));
}

// Codes above 32767 are negative, as an Integer holds them.
Error_Number Run_AscW(Library_Context&, Arguments arguments, Variant& result)
{
    const auto text = First_Character(arguments);
    FORMULA_CHECK(text);
    return Yield(result, std::int16_t((*text)[0].unicode()));
}

Error_Number Run_Chr(Library_Context&, Arguments arguments, Variant& result)
{
    return Character_From(arguments, result, 0, 255, Character_Of_Code);
}

Error_Number Run_ChrB(Library_Context&, Arguments arguments, Variant& result)
{
    return Character_From(arguments, result, 0, 255, [](int code) { return QChar(char16_t(code)); });
}

Error_Number Run_ChrW(Library_Context&, Arguments arguments, Variant& result)
{
    return Character_From(arguments, result, -32768, 65535, [](int code) { return QChar(char16_t(code)); });
}

// Doubles the first character of the second text; no quotes are put around.
Error_Number Run_Quoted(Library_Context& context, Arguments arguments, Variant& result)
{
    auto text = To_Text(arguments[0]);
    FORMULA_CHECK(text);
    const auto quote = To_Text(arguments[1]);
    FORMULA_CHECK(quote);
    if (quote->isEmpty()) return Yield(result, *text);
    const auto problem = Check_Room(context, text->size() + text->count((*quote)[0]));
    if (problem != Error_Number::None) return problem;
    return Yield(result, text->replace(quote->left(1), QString(2, (*quote)[0])));
}

// Paths of the program have no place in formulas.
Error_Number Run_Empty_Text(Library_Context&, Arguments, Variant& result)
{
    return Yield(result, QString());
}

Error_Number Replace_Middle(Variant& text, const Variant& start, const Variant* length, const Variant& value)
{
    auto whole = To_Text(text);
    FORMULA_CHECK(whole);
    const auto part = To_Text(value);
    FORMULA_CHECK(part);
    const auto place = Middle_Place_Of(whole->size(), part->size(), start, length);
    FORMULA_CHECK(place);
    return Yield(text, whole->replace(place->start, place->length, part->left(place->length)));
}

Error_Number Replace_Middle_Bytes(Variant& text, const Variant& start, const Variant* length, const Variant& value)
{
    const auto whole = To_Text(text);
    FORMULA_CHECK(whole);
    const auto part = To_Text(value);
    FORMULA_CHECK(part);
    auto bytes = Bytes_Of(*whole);
    const auto place = Middle_Place_Of(bytes.size(), part->size() * 2, start, length);
    FORMULA_CHECK(place);
    return Yield(text, Text_Of_Bytes(bytes.replace(place->start, place->length, Bytes_Of(*part).left(place->length))));
}

} // namespace Formula
