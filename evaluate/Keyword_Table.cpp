#include "evaluate/Keyword_Table.h"

#include "evaluate/Name_Index.h"

#include <bit>
#include <string_view>
#include <vector>

namespace Formula {

namespace {

struct Word_Row {
    const char* name;
    Token_Word word;
};

constexpr Word_Row Words[] = {
    {"BASE", Token::Base},
    {"BEEP", Token::Beep},
    {"BYREF", Token::By_Ref},
    {"BYVAL", Token::By_Val},
    {"CALL", Token::Call_Keyword},
    {"CASE", Token::Case},
    {"CONST", Token::Const},
    {"DIM", Token::Dim},
    {"DO", Token::Do},
    {"ERASE", Token::Erase},
    {"FOR", Token::For},
    {"GOTO", Token::Go_To},
    {"ELSE", Token::Else},
    {"ELSEIF", Token::Else_If},
    {"END", Token::End},
    {"EXIT", Token::Exit},
    {"FUNCTION", Token::Function},
    {"IF", Token::If},
    {"LOOP", Token::Loop},
    {"NEXT", Token::Next},
    {"OPTION", Token::Option},
    {"OPTIONAL", Token::Optional},
    {"PRESERVE", Token::Preserve},
    {"PRIVATE", Token::Private},
    {"PUBLIC", Token::Public},
    {"RANDOMIZE", Token::Randomize},
    {"REDIM", Token::Re_Dim},
    {"SELECT", Token::Select},
    {"STATIC", Token::Static},
    {"STEP", Token::Step},
    {"SUB", Token::Sub},
    {"THEN", Token::Then},
    {"TO", Token::To},
    {"UNTIL", Token::Until},
    {"WEND", Token::Wend},
    {"WHILE", Token::While},
    {"MOD", Token::Modulo},
    {"LIKE", Token::Like},
    {"NOT", Token::Not},
    {"AND", Token::And},
    {"OR", Token::Or},
    {"XOR", Token::Xor},
    {"EQV", Token::Eqv},
    {"IMP", Token::Imp},
    {"DATE", Token::Date},
    {"NOW", Token::Now},
    {"TIME", Token::Time},
    {"TIMER", Token::Timer},
    {"TESSARY", Token::Tessary},
    {"LISTS", Token::Lists},
    {"LIST", Token::List},
    {"COUNT", Token::Count},
    {"ITEMS", Token::Items},
    {"ITEM", Token::Item},
    {"BRENNICK", Token::Brennick},
};

struct String_Row {
    const char* name;
    std::u16string_view text;
};

using namespace std::string_view_literals;
constexpr String_Row String_Constants[] = {
    {"VBCR", u"\r"sv}, {"VBLF", u"\n"sv}, {"VBCRLF", u"\r\n"sv}, {"VBTAB", u"\t"sv}, {"VBNULLCHAR", u"\0"sv},
};

// A few steps below the nearest Double to pi; formulas have always computed with this one. It prints 3.14159265358979.
constexpr double Pi = std::bit_cast<double>(std::uint64_t{0x400921FB54442D11});

constexpr int First_Constant_Id = 2;
constexpr Token_Word Constant_Token(int id, int kind)
{
    return (id << 16) | 0x1000 | (kind << 8);
}

// The compile-time minimum of a fixed function is 1 whatever its arity: LEFT("x") compiles, and runs on what lies on the
// stack. MAX and MIN take two arguments at most, and a missing second one is filled in with 126.
Function_Row Row_Of(const Built_In& built_in)
{
    const bool fixed = built_in.style == Argument_Style::Fixed;
    Function_Row row{.built_in = &built_in, .arity = fixed ? built_in.maximum : 15, .items = {}, .item_count = 0};
    if (fixed && built_in.references == 0) {
        row.items[0] = Argument::Repeated(built_in.maximum);
        row.item_count = 1;
        return row;
    }
    row.item_count = built_in.maximum;
    for (int i = 0; i < built_in.maximum; ++i) {
        const bool reference = (built_in.references >> i) & 1;
        const bool required = i < built_in.minimum;
        row.items[std::size_t(i)] = reference  ? Argument::Reference_Name
                                    : required ? Argument::Required
                                               : Argument::Optional;
    }
    if (built_in.filler >= 0) row.items[std::size_t(built_in.maximum - 1)] = Argument::Filled(built_in.filler);
    return row;
}

class Keyword_Table {
public:
    Keyword_Table()
    {
        for (const Word_Row& row : Words) Add(row.name, {.word = row.word});
        for (const Built_In& built_in : Built_Ins())
            if (built_in.style != Argument_Style::Niladic) Add_Function(built_in.name, Row_Of(built_in));
        Add_Function("ARRAY", {.built_in = nullptr, .arity = 15, .items = {}, .item_count = 0});
        Add_Constants();
    }

    std::vector<Function_Row> functions;

    const Keyword* Find(QStringView name) const
    {
        const int at = index_.Find(name);
        return at == Name_Index::Not_Found ? nullptr : &keywords_[std::size_t(at)];
    }

    int Count() const { return int(keywords_.size()); }

private:
    void Add_Function(std::string_view name, const Function_Row& row)
    {
        functions.push_back(row);
        const int id = First_Function_Id + int(functions.size()) - 1;
        Add(name, {.word = (id << 16) | 0x6000 | (row.arity << 8) | 0xC8});
    }

    void Add_Constants()
    {
        int id = First_Constant_Id;
        Add("TRUE", {.word = Constant_Token(id++, 1), .number = -1});
        Add("FALSE", {.word = Constant_Token(id++, 1), .number = 0});
        Add("PI", {.word = Constant_Token(id++, 3), .real = Pi});
        for (const String_Row& row : String_Constants)
            Add(row.name, {.word = Constant_Token(id++, 4),
                           .text = QString::fromUtf16(row.text.data(), qsizetype(row.text.size()))});
        for (const Named_Constant& constant : Whole_Number_Constants())
            Add(constant.name, {.word = Constant_Token(id++, 2), .number = constant.value});
    }

    void Add(std::string_view name, const Keyword& keyword)
    {
        index_.Insert(QString::fromLatin1(name.data(), qsizetype(name.size())), int(keywords_.size()));
        keywords_.push_back(keyword);
    }

    std::vector<Keyword> keywords_;
    Name_Index index_;
};

const Keyword_Table& Table()
{
    static const Keyword_Table table;
    return table;
}

} // namespace

std::span<const Function_Row> Function_Rows()
{
    return Table().functions;
}

Token_Word Array_Function()
{
    static const Token_Word word = Find_Keyword(u"ARRAY")->word;
    return word;
}

const Keyword* Find_Keyword(QStringView name)
{
    return Table().Find(name);
}

int Keyword_Count()
{
    return Table().Count();
}

} // namespace Formula
