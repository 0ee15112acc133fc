#pragma once

#include <cstdint>

namespace Formula {

/// Every token, operator, keyword and compiled instruction is one signed 32-bit word:
///
///     31..16 id          unique number of the token
///     15..12 class       Token_Class
///     11..8  arity       class Function: fixed argument count, 0 by descriptor, 15 varying;
///                        class Operator: 1 arithmetic, 2 string, 3 comparison, 4 logical; class Variable: a sub-code
///     7..0   precedence  used by the operator stack only
///
/// Hosts see these words in displays of compiled code: never renumber. XOR, EQV and IMP share an id, so words are
/// compared as a whole, never by id.
using Token_Word = std::int32_t;

enum class Token_Class : int {
    Identifier = 0,
    Constant = 1,
    Literal = 2,
    Niladic = 3,
    Operator = 5,
    Function = 6,
    Statement = 7,
    Punctuation = 8,
    Method = 9,
    Variable = 0xA,
    Tessary = 0xB,
    Control = 0xC,
};

constexpr Token_Class Class_Of(Token_Word word)
{
    return Token_Class((word >> 12) & 0xF);
}
constexpr int Id_Of(Token_Word word)
{
    return (word >> 16) & 0xFFFF;
}
constexpr int Arity_Of(Token_Word word)
{
    return (word >> 8) & 0xF;
}
constexpr int Precedence_Of(Token_Word word)
{
    return word & 0xFF;
}
/// The count that is added to Array_Assign, Element_Read and Element_Store.
constexpr int Count_In(Token_Word word)
{
    return word & 0xFF;
}

namespace Token {
enum : Token_Word {
    None = 0,           ///< nothing was recognised
    No_Unary = 0x10000, ///< never emitted
    Identifier = 0x520000,

    Literal = 0x532000, ///< any value: constants and defaults
    Boolean_Literal = 0x542200,
    Number_Literal = 0x552200, ///< a number from the source
    Long_Literal = 0x562200,   ///< from a named constant or from the compiler
    Double_Literal = 0x572300,
    String_Literal = 0x582400,
    Date_Literal = 0x592500,

    Date = 0x603500,
    Now = 0x613500,
    Time = 0x623500,
    Timer = 0x633500,

    Power = 0x645196,
    Multiply = 0x65518C,
    Divide = 0x66518C,
    Integer_Divide = 0x675182,
    Modulo = 0x685178,
    Add = 0x69516E,
    Subtract = 0x6A516E,
    Negate = 0x6B516E,
    Concatenate = 0x6C5264,
    Like = 0x6D525A,
    Equal = 0x6E5350,
    Not_Equal = 0x6F5350,
    Less_Or_Equal = 0x705350,
    Less = 0x715350,
    Greater_Or_Equal = 0x725350,
    Greater = 0x735350,
    Not = 0x745446,
    And = 0x75543C,
    Or = 0x765432,
    Xor = 0x775428,
    Eqv = 0x77541E,
    Imp = 0x775414,

    Call = 0xE96FC8,

    Base = 0xEC7000,
    Beep = 0xED7000,
    By_Ref = 0xEE7000,
    By_Val = 0xEF7000,
    Call_Keyword = 0xF07000,
    Case = 0xF17000,
    Const = 0xF27000,
    Dim = 0xF37000,
    Do = 0xF47000,
    Erase = 0xF57000,
    For = 0xF67000,
    Go_To = 0xF77000,
    Else = 0xF87000,
    Else_If = 0xF97000,
    End = 0xFA7000,
    Exit = 0xFB7000,
    Function = 0xFC7000,
    Call_Statement = 0xFD7000,
    If = 0xFE7000,
    Label = 0xFF7000,
    Loop = 0x1007000,
    Next = 0x1017000,
    Option = 0x1027000,
    Optional = 0x1037000,
    Preserve = 0x1047000,
    Private = 0x1057000,
    Public = 0x1067000,
    Randomize = 0x1077000,
    Re_Dim = 0x1087000,
    Re_Dim_Preserve = 0x1097000,
    Select = 0x10A7000,
    Static = 0x10B7000,
    Step = 0x10C7000,
    Sub = 0x10D7000,
    Then = 0x10E7000,
    To = 0x10F7000,
    Until = 0x1107000,
    Wend = 0x1117000,
    While = 0x1127000,

    Colon = 0x1138000,
    Comma = 0x1148000,
    Left_Paren = 0x115800A, ///< precedence 10, below every operator: it stops popping
    Right_Paren = 0x1168000,
    Dot = 0x1178000,

    Tessary = 0x1199000,
    Lists = 0x11A9000,
    List = 0x11B9000,
    Count = 0x11C9000,
    Items = 0x11D9000,
    Item = 0x11E9000,
    Brennick = 0x11F9000,

    End_Of_Line = 0x1218000,
    End_Of_Source = 0x1228000,

    Variable_Read = 0x124A100,
    Variable_Store = 0x125A200,
    Array_Assign = 0x126A300,
    Element_Read = 0x127A400,
    Element_Store = 0x128A500,
    Set_Return_Value = 0x129A600,
    Mid_Store = 0x12AA700,
    Mid_B_Store = 0x12BA700,
    Reference = 0x12CA800,
    Tessary_Lists = 0x12EB000,
    Tessary_Count = 0x12FB000,
    Tessary_Items = 0x130B000,
    Tessary_Item = 0x131B000,
    Jump = 0x133C000,
    Jump_If_True = 0x134C000,
    Jump_If_False = 0x135C000,
    For_Setup = 0x136C000,
    For_Test = 0x137C000,
    For_Pop = 0x138C000,
    Procedure_Entry = 0x139C000,
    Return = 0x13AC000,
    Push_Do = 0x13BC100,
    Push_For = 0x13BC200,
    Pop_Block = 0x13CC000,
    Exit_Block = 0x13DC000,
    Drop = 0x13EC000,
    Stop = 0x13FC000,
};
}

static_assert(Class_Of(Token::Left_Paren) == Token_Class::Punctuation && Precedence_Of(Token::Left_Paren) == 10);
static_assert(Id_Of(Token::Xor) == Id_Of(Token::Imp) && Token::Xor != Token::Imp);

} // namespace Formula
