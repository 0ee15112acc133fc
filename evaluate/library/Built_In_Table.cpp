#include "evaluate/library/Built_In_Routines.h"
#include "evaluate/library/Library.h"
#include "evaluate/variant/Conversions.h"

#include <algorithm>

namespace Formula {

namespace {

using enum Access_Class;
using enum Argument_Style;

// name, fewest and most arguments, what it touches, routine, style, by-reference arguments, filler of the last argument
constexpr Built_In Built_In_Table[] = {
    {"ABS", 1, 1, Pure, Run_Abs, Fixed},
    {"ABSOLUTEEXE", 1, 1, Pure, Run_Empty_Text, Fixed},
    {"ABSOLUTEFILEPATH", 1, 1, Pure, Run_Empty_Text, Fixed},
    {"ASC", 1, 1, Pure, Run_Asc, Fixed},
    {"ASCB", 1, 1, Pure, Run_AscB, Fixed},
    {"ASCW", 1, 1, Pure, Run_AscW, Fixed},
    {"ASORT", 1, 4, Pure, Run_ASort, Varying, 1},
    {"ASORTLEN", 1, 4, Pure, Run_ASortLen, Varying, 1},
    {"ATN", 1, 1, Pure, Run_Atn, Fixed},
    {"CBOOL", 1, 1, Pure, Run_Conversion<To_Boolean>, Fixed},
    {"CBYTE", 1, 1, Pure, Run_Conversion<To_Byte>, Fixed},
    {"CDATE", 1, 1, Pure, Run_CDate, Fixed},
    {"CDBL", 1, 1, Pure, Run_Conversion<To_Double>, Fixed},
    {"CHR", 1, 1, Pure, Run_Chr, Fixed},
    {"CHRB", 1, 1, Pure, Run_ChrB, Fixed},
    {"CHRW", 1, 1, Pure, Run_ChrW, Fixed},
    {"CINT", 1, 1, Pure, Run_Conversion<To_Integer>, Fixed},
    {"CLNG", 1, 1, Pure, Run_Conversion<To_Long>, Fixed},
    {"COS", 1, 1, Pure, Run_Cos, Fixed},
    {"CSNG", 1, 1, Pure, Run_Conversion<To_Single>, Fixed},
    {"CSTR", 1, 1, Pure, Run_Conversion<To_Text>, Fixed},
    {"CURDIR", 0, 1, Files, Run_CurDir},
    {"DATE", 0, 0, Clock, Run_Date, Niladic},
    {"DATEADD", 3, 3, Pure, Run_DateAdd, Fixed},
    {"DATEDIFF", 3, 5, Pure, Run_DateDiff},
    {"DATEPART", 2, 4, Pure, Run_DatePart},
    {"DATESERIAL", 3, 3, Pure, Run_DateSerial, Fixed},
    {"DATEVALUE", 1, 1, Pure, Run_DateValue, Fixed},
    {"DIR", 0, 2, Files, Run_Dir},
    {"ENVIRON", 1, 1, Environment, Run_Environ, Fixed},
    {"EXP", 1, 1, Pure, Run_Exp, Fixed},
    {"FILEDATETIME", 1, 1, Files, Run_FileDateTime, Fixed},
    {"FILELEN", 1, 1, Files, Run_FileLen, Fixed},
    {"FILTER", 2, 4, Pure, Run_Filter},
    {"FIRSTLIKEBEGIN", 2, 3, Pure, Run_FirstLikeBegin},
    {"FIRSTLIKEEND", 2, 3, Pure, Run_FirstLikeEnd},
    {"FIX", 1, 1, Pure, Run_Fix, Fixed},
    {"FORMAT", 1, 4, Pure, Run_Format},
    {"FORMATCURRENCY", 1, 5, Pure, Run_FormatCurrency},
    {"FORMATDATETIME", 1, 2, Pure, Run_FormatDateTime},
    {"FORMATNUMBER", 1, 5, Pure, Run_FormatNumber},
    {"FORMATPERCENT", 1, 5, Pure, Run_FormatPercent},
    {"GETALLSETTINGS", 2, 2, Settings, Run_GetAllSettings, Fixed},
    {"GETATTR", 1, 1, Files, Run_GetAttr, Fixed},
    {"GETSETTING", 3, 4, Settings, Run_GetSetting},
    {"HEX", 1, 1, Pure, Run_Hex, Fixed},
    {"IIF", 3, 3, Pure, Run_IIf, Fixed},
    {"INPUTBOX", 1, 7, Dialog, Run_InputBox},
    {"INSTR", 2, 4, Pure, Run_InStr},
    {"INSTRB", 2, 4, Pure, Run_InStrB},
    {"INSTRREV", 2, 4, Pure, Run_InStrRev},
    {"INT", 1, 1, Pure, Run_Int, Fixed},
    {"ISARRAY", 1, 1, Pure, Run_IsArray, Fixed, 1},
    {"ISDATE", 1, 1, Pure, Run_IsDate, Fixed},
    {"ISEMPTY", 1, 1, Pure, Run_IsEmpty, Fixed, 1},
    {"ISNULL", 1, 1, Pure, Run_IsNull, Fixed},
    {"ISNUMERIC", 1, 1, Pure, Run_IsNumeric, Fixed},
    {"JOIN", 1, 2, Pure, Run_Join},
    {"LASTLIKEBEGIN", 2, 3, Pure, Run_LastLikeBegin},
    {"LASTLIKEEND", 2, 3, Pure, Run_LastLikeEnd},
    {"LBOUND", 1, 2, Pure, Run_LBound, Varying, 1, 1},
    {"LCASE", 1, 1, Pure, Run_LCase, Fixed},
    {"LEFT", 2, 2, Pure, Run_Left, Fixed},
    {"LEFTB", 2, 2, Pure, Run_LeftB, Fixed},
    {"LEN", 1, 1, Pure, Run_Len, Fixed},
    {"LENB", 1, 1, Pure, Run_LenB, Fixed},
    {"LOG", 1, 1, Pure, Run_Log, Fixed},
    {"LTRIM", 1, 1, Pure, Run_LTrim, Fixed},
    {"MATCH", 2, 3, Pure, Run_Match, Varying, 2},
    {"MAX", 1, 2, Pure, Run_Max, Varying, 0, 126},
    {"MID", 2, 3, Pure, Run_Mid},
    {"MIDB", 2, 3, Pure, Run_MidB},
    {"MIN", 1, 2, Pure, Run_Min, Varying, 0, 126},
    {"MONTHNAME", 1, 2, Pure, Run_MonthName},
    {"MSGBOX", 1, 5, Dialog, Run_MsgBox},
    {"NOW", 0, 0, Clock, Run_Now, Niladic},
    {"OCT", 1, 1, Pure, Run_Oct, Fixed},
    {"PARTITION", 4, 4, Pure, Run_Partition, Fixed},
    {"QUOTED", 2, 2, Pure, Run_Quoted, Fixed},
    {"REPLACE", 3, 6, Pure, Run_Replace},
    {"RIGHT", 2, 2, Pure, Run_Right, Fixed},
    {"RIGHTB", 2, 2, Pure, Run_RightB, Fixed},
    {"RND", 0, 1, Pure, Run_Rnd},
    {"ROUND", 1, 2, Pure, Run_Round},
    {"RTRIM", 1, 1, Pure, Run_RTrim, Fixed},
    {"SCAN", 2, 3, Pure, Run_Scan},
    {"SCANREV", 2, 3, Pure, Run_ScanRev},
    {"SELECTBOX", 3, 4, Pure, Run_Empty_Text, Top_Only},
    {"SGN", 1, 1, Pure, Run_Sgn, Fixed},
    {"SIN", 1, 1, Pure, Run_Sin, Fixed},
    {"SPACE", 1, 1, Pure, Run_Space, Fixed},
    {"SPAN", 2, 3, Pure, Run_Span},
    {"SPANREV", 2, 3, Pure, Run_SpanRev},
    {"SPLIT", 1, 4, Pure, Run_Split},
    {"SQR", 1, 1, Pure, Run_Sqr, Fixed},
    {"STRCOMP", 2, 3, Pure, Run_StrComp},
    {"STRCONV", 2, 3, Pure, Run_StrConv},
    {"STRING", 2, 2, Pure, Run_String, Fixed},
    {"STRREVERSE", 1, 1, Pure, Run_StrReverse, Fixed},
    {"TAN", 1, 1, Pure, Run_Tan, Fixed},
    {"TIME", 0, 0, Clock, Run_Time, Niladic},
    {"TIMER", 0, 0, Clock, Run_Timer, Niladic},
    {"TIMESERIAL", 3, 3, Pure, Run_TimeSerial, Fixed},
    {"TIMEVALUE", 1, 1, Pure, Run_TimeValue, Fixed},
    {"TRIM", 1, 1, Pure, Run_Trim, Fixed},
    {"TYPENAME", 1, 1, Pure, Run_TypeName, Fixed},
    {"UBOUND", 1, 2, Pure, Run_UBound, Varying, 1, 1},
    {"UCASE", 1, 1, Pure, Run_UCase, Fixed},
    {"VAL", 1, 1, Pure, Run_Val, Fixed},
    {"VARTYPE", 1, 1, Pure, Run_VarType, Fixed},
    {"WEEKDAYNAME", 1, 3, Pure, Run_WeekdayName},
};

constexpr Named_Constant Constant_Table[] = {
    {"VBABORT", 3},
    {"VBABORTRETRYIGNORE", 2},
    {"VBAPPLICATIONMODAL", 0},
    {"VBARRAY", 8192},
    {"VBBINARYCOMPARE", 0},
    {"VBBOOLEAN", 11},
    {"VBBYTE", 17},
    {"VBCANCEL", 2},
    {"VBCRITICAL", 16},
    {"VBCURRENCY", 6},
    {"VBDATAOBJECT", 13},
    {"VBDATE", 7},
    {"VBDECIMAL", 14},
    {"VBDEFAULTBUTTON1", 0},
    {"VBDEFAULTBUTTON2", 256},
    {"VBDEFAULTBUTTON3", 512},
    {"VBDEFAULTBUTTON4", 768},
    {"VBDIRECTORY", 16},
    {"VBDOUBLE", 5},
    {"VBEMPTY", 0},
    {"VBERROR", 10},
    {"VBEXCLAMATION", 48},
    {"VBFIRSTFOURDAYS", 2},
    {"VBFIRSTFULLWEEK", 3},
    {"VBFIRSTJAN1", 1},
    {"VBFRIDAY", 6},
    {"VBFROMUNICODE", 128},
    {"VBHIDDEN", 2},
    {"VBHIRAGANA", 32},
    {"VBIGNORE", 5},
    {"VBINFORMATION", 64},
    {"VBINTEGER", 2},
    {"VBKATAKANA", 16},
    {"VBLONG", 3},
    {"VBLOWERCASE", 2},
    {"VBMONDAY", 2},
    {"VBMSGBOXHELPBUTTON", 16384},
    {"VBMSGBOXRIGHT", 524288},
    {"VBMSGBOXRTLREADING", 1048576},
    {"VBMSGBOXSETFOREGROUND", 65536},
    {"VBNARROW", 8},
    {"VBNO", 7},
    {"VBNORMAL", 0},
    {"VBNULL", 1},
    {"VBOBJECT", 9},
    {"VBOK", 1},
    {"VBOKCANCEL", 1},
    {"VBOKONLY", 0},
    {"VBPROPERCASE", 3},
    {"VBQUESTION", 32},
    {"VBREADONLY", 1},
    {"VBRETRY", 4},
    {"VBRETRYCANCEL", 5},
    {"VBSATURDAY", 7},
    {"VBSINGLE", 4},
    {"VBSTRING", 8},
    {"VBSUNDAY", 1},
    {"VBSYSTEM", 4},
    {"VBSYSTEMMODAL", 4096},
    {"VBTEXTCOMPARE", 1},
    {"VBTHURSDAY", 5},
    {"VBTUESDAY", 3},
    {"VBUNICODE", 64},
    {"VBUPPERCASE", 1},
    {"VBUSESYSTEM", 0},
    {"VBVARIANT", 12},
    {"VBVOLUME", 8},
    {"VBWEDNESDAY", 4},
    {"VBWIDE", 4},
    {"VBYES", 6},
    {"VBYESNO", 4},
    {"VBYESNOCANCEL", 3},
};

template <class Row, std::size_t Count>
constexpr bool Is_Sorted(const Row (&table)[Count])
{
    for (std::size_t i = 1; i < Count; ++i)
        if (table[i - 1].name >= table[i].name) return false;
    return true;
}

constexpr bool Is_Complete()
{
    return std::ranges::all_of(Built_In_Table,
                               [](const Built_In& row) { return row.access != Unset && row.minimum <= row.maximum; });
}

static_assert(Is_Sorted(Built_In_Table));
static_assert(Is_Sorted(Constant_Table));
static_assert(Is_Complete(), "every built-in says what it touches");

} // namespace

std::span<const Built_In> Built_Ins()
{
    return Built_In_Table;
}

std::span<const Named_Constant> Whole_Number_Constants()
{
    return Constant_Table;
}

const Built_In* Find_Built_In(std::string_view name)
{
    const auto* row = std::ranges::lower_bound(Built_In_Table, name, {}, &Built_In::name);
    return row != std::end(Built_In_Table) && row->name == name ? row : nullptr;
}

} // namespace Formula
