#pragma once

#include "evaluate/library/Library.h"
#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Operators.h"

#include <optional>

/// How the built-ins read their arguments. Inside the library only.
namespace Formula {

using Arguments = std::span<Variant>;

inline bool Has(Arguments arguments, std::size_t index)
{
    return index < arguments.size() && !arguments[index].Is_Missing();
}

inline Evaluated<QString> Text_At(Arguments arguments, std::size_t index, const char* standard = "")
{
    return Has(arguments, index) ? To_Text(arguments[index]) : Evaluated<QString>(QString::fromLatin1(standard));
}

inline Evaluated<std::int32_t> Long_At(Arguments arguments, std::size_t index, std::int32_t standard = 0)
{
    return Has(arguments, index) ? To_Long(arguments[index]) : Evaluated<std::int32_t>(standard);
}

inline Evaluated<bool> Boolean_At(Arguments arguments, std::size_t index, bool standard)
{
    return Has(arguments, index) ? To_Boolean(arguments[index]) : Evaluated<bool>(standard);
}

/// A compare mode; 5 when it is neither 0 nor 1, nor -1, which is the default.
Evaluated<Compare_Mode> Mode_At(Arguments arguments, std::size_t index);

template <class Value>
Error_Number Yield(Variant& result, Value value)
{
    result = Variant(std::move(value));
    return Error_Number::None;
}

inline Error_Number Yield_Null(Variant& result)
{
    result = Variant::Null();
    return Error_Number::None;
}

/// A text, unless it is longer than a formula may have (14).
Error_Number Yield_Text(Variant& result, QString text);

/// 14 when a text of that many characters is too long.
Error_Number Check_Length(std::int64_t characters);

/// The same, also when there is no memory left for it. For what makes a text longer than its arguments, before it does.
Error_Number Check_Room(Library_Context& context, std::int64_t characters);

// Byte strings: two bytes a character, the low one first. An odd last byte is the low half of a character.
QByteArray Bytes_Of(const QString& text);
QString Text_Of_Bytes(const QByteArray& bytes);

/// Windows-1252 for the codes 0 to 255, and back (63, the question mark, when there is none).
QChar Character_Of_Code(int code);
int Code_Of_Character(QChar character);

} // namespace Formula

/// Ends the routine with the error of an Evaluated, or goes on.
#define FORMULA_CHECK(value)                                                                                           \
    if (!(value)) return (value).error()
