#pragma once

#include <string_view>
#include <tl/expected.hpp>

namespace Formula {

/// What stops a formula. Hosts and users see these numbers: never renumber. Those below 1000 are the classic ones of
/// the variant library, those from 32769 on belong to the engine. Nothing raises Unknown_Constant and
/// Undimensioned_Variable any more: constants are known when a text is compiled, and an array without bounds is an
/// uninitialized variable. Their texts stay for hosts that show a number.
enum class [[nodiscard]] Error_Number : int{
    None = 0,
    Invalid_Call = 5,
    Overflow = 6,
    Out_Of_Memory = 7,
    Subscript_Out_Of_Range = 9,
    Division_By_Zero = 11,
    Type_Mismatch = 13,
    Out_Of_String_Space = 14,
    Expression_Too_Complex = 16,
    Out_Of_Stack_Space = 28,
    File_Not_Found = 53,
    Permission_Denied = 70,
    Invalid_Pattern = 93,
    Invalid_Use_Of_Null = 94,
    Stack_Underflow = 32769,
    Not_An_Array = 32770,
    Array_Index_Invalid = 32771,
    Invalid_Array_Assignment = 32772,
    Unknown_Constant = 32773,
    Unknown_Variable = 32774,
    Uninitialized_Variable = 32775,
    Undimensioned_Variable = 32776,
    Resource_Allocation = 32777,
    Execution_Engine = 32778,
};

struct Error_Text {
    Error_Number number;
    std::string_view text;
};

/// Sorted by number, complete: a number without a text does not pass the check below.
inline constexpr Error_Text Error_Text_Table[] = {
    {Error_Number::None, ""},
    {Error_Number::Invalid_Call, "Invalid procedure call or argument"},
    {Error_Number::Overflow, "Overflow"},
    {Error_Number::Out_Of_Memory, "Out of memory"},
    {Error_Number::Subscript_Out_Of_Range, "Subscript out of range"},
    {Error_Number::Division_By_Zero, "Division by zero"},
    {Error_Number::Type_Mismatch, "Type mismatch"},
    {Error_Number::Out_Of_String_Space, "Out of string space"},
    {Error_Number::Expression_Too_Complex, "Expression too complex"},
    {Error_Number::Out_Of_Stack_Space, "Out of stack space"},
    {Error_Number::File_Not_Found, "File not found"},
    {Error_Number::Permission_Denied, "Permission denied"},
    {Error_Number::Invalid_Pattern, "Invalid pattern string"},
    {Error_Number::Invalid_Use_Of_Null, "Invalid use of Null"},
    {Error_Number::Stack_Underflow, "Stack underflow"},
    {Error_Number::Not_An_Array, "Not an array"},
    {Error_Number::Array_Index_Invalid, "Array index invalid"},
    {Error_Number::Invalid_Array_Assignment, "Invalid array assignment"},
    {Error_Number::Unknown_Constant, "Unknown constant"},
    {Error_Number::Unknown_Variable, "Unknown variable"},
    {Error_Number::Uninitialized_Variable, "Uninitialized variable"},
    {Error_Number::Undimensioned_Variable, "Undimensioned variable"},
    {Error_Number::Resource_Allocation, "Resource allocation error"},
    {Error_Number::Execution_Engine, "Execution engine error"},
};

constexpr bool Error_Texts_Are_Sorted()
{
    for (std::size_t i = 1; i < std::size(Error_Text_Table); ++i)
        if (Error_Text_Table[i - 1].number >= Error_Text_Table[i].number) return false;
    return true;
}
static_assert(Error_Texts_Are_Sorted());

/// The words for a number; a number that is not in the table has the classic words for that.
constexpr std::string_view Error_Description(Error_Number number)
{
    for (const auto& row : Error_Text_Table)
        if (row.number == number) return row.text;
    return "Application-defined or object-defined error";
}

/// A value, or the number of what went wrong.
template <class Value>
using Evaluated = tl::expected<Value, Error_Number>;

inline tl::unexpected<Error_Number> Fails(Error_Number number)
{
    return tl::make_unexpected(number);
}

} // namespace Formula
