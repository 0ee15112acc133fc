#pragma once

#include "evaluate/Token_Word.h"

#include "evaluate/library/Library.h"

#include <QtCore/QStringView>
#include <array>
#include <cstdint>
#include <span>

namespace Formula {

/// What a parameter position accepts; the compiler walks through an array of these. A position beyond the last uses the
/// last item.
using Argument_Item = std::int32_t;

namespace Argument {
constexpr Argument_Item Required = 0x100000;
constexpr Argument_Item Reference_Name = 0x110000; ///< a bare name, passed by reference
constexpr Argument_Item Optional = 0;
constexpr Argument_Item Written_Default = 0x3000;
constexpr Argument_Item Any_Number = 0x107F; ///< 0 to 127 optional expressions: a procedure that is not defined yet
constexpr Argument_Item Filled(int literal)
{
    return Written_Default + literal;
} ///< the compiler fills the literal in
constexpr Argument_Item Repeated(int most)
{
    return 0x101000 + most;
} ///< as last item: required, may repeat
} // namespace Argument

/// A built-in function as the compiler and the engine see it.
struct Function_Row {
    const Built_In* built_in; ///< null for ARRAY, which only the statement compiler knows
    int arity;                ///< 1 to 4 fixed, 15 varying
    std::array<Argument_Item, 8> items;
    int item_count;
    std::span<const Argument_Item> Descriptor() const { return {items.data(), std::size_t(item_count)}; }
};

/// Row i has the id First_Function_Id + i.
std::span<const Function_Row> Function_Rows();

/// The only function without a routine: it stands for the whole right side of an assignment.
Token_Word Array_Function();

constexpr int First_Function_Id = 0x78;
/// The row of a class Function word other than Call.
constexpr int Function_Row_Of(Token_Word word)
{
    return Id_Of(word) - First_Function_Id;
}

/// A keyword as found in a text. Named constants carry their value; the arity of their token is its kind: 1 Boolean,
/// 2 Long, 3 Double, 4 String.
struct Keyword {
    Token_Word word = Token::None;
    std::int32_t number = 0;
    double real = 0;
    QString text = {};
};

/// The keyword of that name in any case, or null: then it is an identifier. DAY, HOUR, MINUTE, MONTH, SECOND, WEEKDAY
/// and YEAR are no keywords.
const Keyword* Find_Keyword(QStringView name);

/// Every keyword there is, for checks of the table.
int Keyword_Count();

} // namespace Formula
