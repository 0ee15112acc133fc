#include "evaluate/Scanner.h"

#include "evaluate/Literal_Values.h"

namespace Formula {

namespace {

bool Is_Digit(char16_t c)
{
    return c >= '0' && c <= '9';
}

bool Is_Letter(char16_t c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool Is_Line_End(char16_t c)
{
    return c == '\n' || c == '\r';
}

/// Octal digits end the number, so &O9 is &O and a 9; any letter belongs to a hexadecimal number, so &HFG is one wrong
/// number rather than a number and a name.
bool Is_Radix_Digit(char16_t c, int radix)
{
    return radix == 8 ? c >= '0' && c <= '7' : Is_Digit(c) || Is_Letter(c);
}

} // namespace

Scanned_Token Scanner::Next()
{
    if (Skip_Blanks_And_Comment()) return {.word = Token::End_Of_Line, .start = start_};
    start_ = position_;
    if (Past_End()) return {.word = Token::End_Of_Source, .start = start_};
    const char16_t c = At(position_);
    if (Is_Digit(c) || Radix_Prefix() != 10) return Number();
    if (c == '"') return String();
    if (c == '#') return Date();
    if (Is_Letter(c)) return Name();
    return {.word = Symbol(), .start = start_};
}

/// True at a line end, which is swallowed then. A "_" continues the line: what stands behind it is a remark.
bool Scanner::Skip_Blanks_And_Comment()
{
    while (!Past_End()) {
        const char16_t c = At(position_);
        start_ = position_;
        if (Is_Line_End(c)) return Swallow_Line_End();
        if (c == '\'') {
            Skip_Rest_Of_Line();
            start_ = position_;
            return Swallow_Line_End();
        }
        if (c == '_') {
            Skip_Rest_Of_Line();
            Swallow_Line_End();
        } else if (c > ' ') {
            return false;
        } else {
            ++position_;
        }
    }
    return false;
}

void Scanner::Skip_Rest_Of_Line()
{
    while (!Past_End() && !Is_Line_End(At(position_))) ++position_;
}

bool Scanner::Swallow_Line_End()
{
    const int begin = position_;
    while (!Past_End() && Is_Line_End(At(position_))) ++position_;
    return position_ > begin;
}

Token_Word Scanner::Symbol()
{
    const char16_t c = At(position_), next = At(position_ + 1);
    const auto take = [this](int length, Token_Word word) {
        position_ += length;
        return word;
    };
    switch (c) {
    case '+': return take(1, Token::Add);
    case '-': return take(1, Token::Subtract);
    case '*': return take(1, Token::Multiply);
    case '/': return take(1, Token::Divide);
    case '\\': return take(1, Token::Integer_Divide);
    case '^': return take(1, Token::Power);
    case '&': return take(1, Token::Concatenate);
    case '=': return take(1, Token::Equal);
    case ':': return take(1, Token::Colon);
    case '(': return take(1, Token::Left_Paren);
    case ',': return take(1, Token::Comma);
    case ')': return take(1, Token::Right_Paren);
    case '.': return take(1, Token::Dot);
    case '<':
        if (next == '>') return take(2, Token::Not_Equal);
        return next == '=' ? take(2, Token::Less_Or_Equal) : take(1, Token::Less);
    case '>': return next == '=' ? take(2, Token::Greater_Or_Equal) : take(1, Token::Greater);
    default: return Token::None;
    }
}

int Scanner::Radix_Prefix() const
{
    if (At(position_) != '&') return 10;
    const char16_t next = At(position_ + 1);
    if (next == 'h' || next == 'H') return 16;
    return next == 'o' || next == 'O' ? 8 : 10;
}

template <class Convert>
Scanned_Token Scanner::Literal(Token_Word word, Convert convert)
{
    Evaluated<Variant> value = convert();
    if (value) return {.word = word, .start = start_, .value = std::move(*value)};
    Fail(int(value.error()), QString::fromUtf8(Error_Description(value.error())));
    return {.start = start_};
}

Scanned_Token Scanner::Number()
{
    const int radix = Radix_Prefix();
    bool decimal = false;
    if (radix != 10) {
        position_ += 2;
        while (!Past_End() && Is_Radix_Digit(At(position_), radix)) ++position_;
    } else {
        Skip_Digits();
        decimal = At(position_) == '.' && !Past_End();
        if (decimal) {
            ++position_;
            Skip_Digits();
        }
        Skip_Exponent();
    }
    const QString text = source_.mid(start_ - 1, position_ - start_);
    return Literal(Token::Number_Literal, [&] { return decimal ? Decimal_Literal(text) : Whole_Literal(text); });
}

void Scanner::Skip_Digits()
{
    while (!Past_End() && Is_Digit(At(position_))) ++position_;
}

void Scanner::Skip_Exponent()
{
    const char16_t c = At(position_) | 0x20;
    if (Past_End() || (c != 'e' && c != 'd')) return;
    ++position_;
    if (At(position_) == '+' || At(position_) == '-') ++position_;
    Skip_Digits();
}

Scanned_Token Scanner::String()
{
    QString text;
    int from = ++position_;
    for (; !Past_End(); ++position_) {
        if (At(position_) != '"') continue;
        text += QStringView(source_).mid(from - 1, position_ - from);
        if (At(position_ + 1) != '"') {
            ++position_;
            return {.word = Token::String_Literal, .start = start_, .value = Variant(text)};
        }
        from = ++position_; // the second of two delimiters stays in the value
    }
    // The colon is part of the text: hosts append it to words of their own.
    Fail(1, QStringLiteral(": missing string delimiter"));
    return {.start = start_};
}

Scanned_Token Scanner::Date()
{
    const int from = ++position_;
    while (!Past_End() && At(position_) != '#') ++position_;
    const QString text = source_.mid(from - 1, position_ - from);
    if (!Past_End()) ++position_;
    return Literal(Token::Date_Literal, [&] { return Date_Literal(text); });
}

Scanned_Token Scanner::Name()
{
    while (!Past_End() && (Is_Letter(At(position_)) || Is_Digit(At(position_)) || At(position_) == '_')) ++position_;
    const auto name = QStringView(source_).mid(start_ - 1, position_ - start_);
    const Keyword* keyword = Find_Keyword(name);
    if (!keyword) return {.word = Token::Identifier, .start = start_, .name = name.toString()};
    Scanned_Token token{.word = keyword->word, .start = start_};
    if (Class_Of(keyword->word) != Token_Class::Constant) return token;
    switch (Arity_Of(keyword->word)) {
    case 1: token.value = Variant(keyword->number != 0); break;
    case 2: token.value = Variant(keyword->number); break;
    case 3: token.value = Variant(keyword->real); break;
    default: token.value = Variant(keyword->text); break;
    }
    return token;
}

} // namespace Formula
