#pragma once

#include <QtCore/QChar>
#include <QtCore/QString>
#include <optional>
#include <vector>

/// Patterns of the Like rule: "*" any run, "?" one character, "#" one digit, "[list]" one character of a list with ranges
/// such as "a-z", "[!list]" one that is not in it; "[]" is nothing. A character is a UTF-16 unit. Matching takes time
/// proportional to text times pattern at most.
class Like_Pattern {
public:
    enum class Compare { Binary, Text }; ///< Text: without regard to case

    /// Nothing when a "[" is not closed or a range runs backwards.
    static std::optional<Like_Pattern> Compile(const QString& pattern, Compare compare);

    bool Matches(QStringView text) const; ///< the whole text

    /// Where a part of a text fits. Positions are 1-based and inclusive; begin 0 when nothing fits. A part has at least one
    /// character.
    struct Part {
        int begin = 0;
        int end = 0;
        bool operator==(const Part&) const = default;
    };

    /// Of all parts at or behind `position`, those that end first; of these, the shortest.
    Part First_In(const QString& text, int position = 1) const;

    /// Of all parts in the first `position` characters (0 or less: all of them), those that begin last; of these, the
    /// shortest.
    Part Last_In(const QString& text, int position = 0) const;

private:
    struct Element {
        enum class Kind { Character, One, Digit, Run, List } kind = Kind::One;
        char16_t character = 0;
        bool negated = false;
        std::vector<std::pair<char16_t, char16_t>> ranges{};
    };
    struct Search; // the states of one matching run
    bool Fits(const Element& element, char16_t character) const;
    static bool Read_List(const QString& pattern, int& index, Element& element);
    char16_t Folded(char16_t character) const;
    std::vector<Element> elements_;
    Compare compare_ = Compare::Text;
};

/// The whole text against a pattern; false when the pattern is malformed.
bool Like(const QString& text, const QString& pattern, Like_Pattern::Compare compare = Like_Pattern::Compare::Text);
