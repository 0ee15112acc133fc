#pragma once

#include "evaluate/Formula_Memory.h"
#include "evaluate/library/Formula_Host_Services.h"
#include "evaluate/variant/Evaluate_Error.h"
#include "evaluate/variant/Variant.h"
#include "frame/files/Limits.h"

#include <span>
#include <string_view>

/// The built-in functions: plain routines over variants, found through one table.
namespace Formula {

/// What a built-in touches. A host allows a set of them; a refused built-in raises 70.
enum class Access_Class : std::uint8_t {
    Unset = 0, ///< never in the table: the build fails
    Pure = 1,
    Clock = 2,
    Files = 4,
    Environment = 8,
    Settings = 16,
    Dialog = 32,
};
inline constexpr unsigned All_Access = 63;

constexpr bool Is_Allowed(Access_Class access, unsigned allowed)
{
    return (unsigned(access) & ~allowed) == 0;
}

/// A variable that a by-reference argument names.
struct Variable_View {
    Variant* value = nullptr;
    int dimensions = 0; ///< as recorded by Dim, ReDim and Array: 0 for a scalar
};

/// How built-ins with a by-reference argument reach the variable; the engine implements it.
class Variable_Access {
public:
    virtual ~Variable_Access() = default;
    virtual Evaluated<Variable_View> Find_Variable(const Variant& reference) = 0; ///< 32774 when unknown
};

/// The sequence behind Rnd: x = (x * 0x43FD43FD + 0xC39EC3) in 24 bits.
struct Random_State {
    std::uint32_t seed = 0x50000;
};

/// What the routines share. One for each evaluator; it outlives none of what it points to.
struct Library_Context {
    Formula_Host_Services& services;
    Variable_Access& variables;
    Random_State random = {};
    QStringList pending_folder_entries = {}; ///< what further calls of Dir yield
    Formula_Memory memory{Current_Limits().formula_bytes};
};

/// arguments   those that were written, in order; trailing ones may be missing. The routine may spoil them.
/// result      Empty at the call; not one of the arguments. Left alone on failure.
using Built_In_Routine = Error_Number (*)(Library_Context& context, std::span<Variant> arguments, Variant& result);

/// How an engine has to treat the arguments.
enum class Argument_Style : std::uint8_t {
    Fixed,    ///< exactly `maximum` operands at run time; the compiler accepts 1 to that many
    Varying,  ///< as many as are written
    Niladic,  ///< no parentheses
    Top_Only, ///< only the top operand is replaced, the others stay below it
};

struct Built_In {
    std::string_view name; ///< upper case
    std::int8_t minimum = 0, maximum = 0;
    Access_Class access = Access_Class::Unset;
    Built_In_Routine run = nullptr;
    Argument_Style style = Argument_Style::Varying;
    std::uint8_t references = 0; ///< bit i is set when argument i is a bare name passed by reference
    std::int16_t filler = -1;    ///< the whole number that the compiler writes for a last argument left out; -1: none
};

struct Named_Constant {
    std::string_view name; ///< upper case
    std::int32_t value = 0;
};

/// All functions, all named constants with a whole number; both sorted by name.
std::span<const Built_In> Built_Ins();
std::span<const Named_Constant> Whole_Number_Constants();

/// nullptr when there is none. The name must be in upper case.
const Built_In* Find_Built_In(std::string_view name);

// Statements that share the library's state or rules.
Error_Number Randomize(Library_Context& context, const Variant* number); ///< nullptr: by the clock
/// Replaces the characters of `text` from start (1-based) on, at most `length` (negative: no limit) of them, and never
/// makes it longer. 5 for a start outside the text.
Error_Number Replace_Middle(Variant& text, const Variant& start, const Variant* length, const Variant& value);
Error_Number Replace_Middle_Bytes(Variant& text, const Variant& start, const Variant* length, const Variant& value);
inline constexpr Access_Class Beep_Access = Access_Class::Dialog;

QString Type_Name(Variant_Type type); ///< as TypeName answers

// Parts of a date for engines: each replaces the value by an Integer.
enum class Date_Part : int { Year, Month, Day, Hour, Minute, Second, Weekday };
Error_Number Take_Date_Part(Variant& value, Date_Part part);

} // namespace Formula
