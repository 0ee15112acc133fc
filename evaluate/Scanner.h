#pragma once

#include "evaluate/Program_Code.h"

#include <optional>

namespace Formula {

/// One token of a source text.
struct Scanned_Token {
    Token_Word word = Token::None;
    int start = 0;      ///< 1-based position of its first character
    Variant value = {}; ///< of a literal or a named constant
    QString name = {};  ///< of an identifier, as written
};

/// Cuts a source text into tokens. Where no token can begin (a stray "?" or "$") the token word is Token::None, and the
/// scanner stays there. A literal that cannot be converted is None too, with the reason in Failed.
class Scanner {
public:
    explicit Scanner(const QString& source) : source_(source) {}

    Scanned_Token Next();
    int Position() const { return position_; }
    void Set_Position(int position) { position_ = position; }
    const std::optional<Evaluation_Error>& Failed() const { return failed_; }

private:
    char16_t At(int position) const
    {
        return position <= source_.size() ? source_.at(position - 1).unicode() : char16_t(0);
    }
    bool Past_End() const { return position_ > source_.size(); }
    bool Skip_Blanks_And_Comment();
    void Skip_Rest_Of_Line();
    bool Swallow_Line_End();
    Scanned_Token Number();
    Scanned_Token String();
    Scanned_Token Date();
    Scanned_Token Name();
    Token_Word Symbol();
    void Skip_Digits();
    void Skip_Exponent();
    int Radix_Prefix() const;
    template <class Convert>
    Scanned_Token Literal(Token_Word word, Convert convert);
    void Fail(int code, const QString& text) { failed_ = Evaluation_Error{code, text, start_}; }

    QString source_;
    int position_ = 1;
    int start_ = 1;
    std::optional<Evaluation_Error> failed_;
};

} // namespace Formula
