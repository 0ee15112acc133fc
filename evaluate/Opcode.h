#pragma once

#include <cstdint>

namespace Formula {

/// The instructions as the engine's switch sees them: dense, beside the token words that hosts see. The first group runs
/// inside the dispatch loop, the second in routines of its own.
enum class Opcode : std::uint8_t {
    Pair, ///< a literal or a read in front of another one and an operator that has a quick way
    Literal,
    Read,
    Store,
    Add,
    Subtract,
    Multiply,
    Divide,
    Integer_Divide,
    Modulo,
    Power,
    Concatenate,
    Like,
    Equal,
    Not_Equal,
    Less,
    Less_Or_Equal,
    Greater,
    Greater_Or_Equal,
    And,
    Or,
    Xor,
    Eqv,
    Imp,
    Not,
    Negate,
    Jump,
    Jump_If_True,
    Jump_If_False,
    For_Test,
    Drop,
    Stop,
    Built_In,

    Niladic,
    Array_Assign,
    Element_Read,
    Element_Store,
    Set_Return_Value,
    Mid_Store,
    Mid_B_Store,
    Reference,
    Push_Empty, ///< the Tessary family, which this system answers with Empty
    For_Setup,
    For_Pop,
    Procedure_Entry,
    Return,
    Push_Block,
    Pop_Block,
    Exit_Block,
    Call,
    Beep,
    Randomize,
    Re_Dim,
    Re_Dim_Preserve,
    Erase,
    Unknown,
};

} // namespace Formula
