#include "evaluate/library/Format_Pattern.h"

// A text pattern: "@" a character or a blank, "&" a character or nothing, "<" and ">" the case of all, "!" fills the
// places from the left instead of the right. Characters beyond the places go to the end that is filled last.
namespace Formula {

namespace {

/// What a section asks for besides its places.
struct Text_Layout {
    qsizetype places = 0;
    bool from_left = false;
    QChar letter_case = u' ';
};

bool Is_Place(const Pattern_Letter& letter)
{
    return !letter.is_literal && (letter.letter == u'@' || letter.letter == u'&');
}

Text_Layout Layout_Of(const Pattern_Letters& section)
{
    Text_Layout layout;
    for (const auto& letter : section) {
        if (Is_Place(letter)) ++layout.places;
        if (letter.is_literal) continue;
        if (letter.letter == u'!') layout.from_left = true;
        if (letter.letter == u'<' || letter.letter == u'>') layout.letter_case = letter.letter;
    }
    return layout;
}

QString In_Case(QString text, QChar letter_case)
{
    for (auto& c : text) {
        if (letter_case == u'<') c = c.toLower();
        if (letter_case == u'>') c = c.toUpper();
    }
    return text;
}

QString Filled(const QString& text, const Pattern_Letters& section, const Text_Layout& layout)
{
    const auto blanks = layout.from_left ? 0 : std::max<qsizetype>(layout.places - text.size(), 0);
    const auto surplus = std::max<qsizetype>(text.size() - layout.places, 0);
    QString filled;
    qsizetype place = 0, taken = 0;
    for (const auto& letter : section) {
        if (!Is_Place(letter)) {
            if (letter.is_literal || !QLatin1StringView("<>!").contains(letter.letter)) filled += letter.letter;
            continue;
        }
        if (place == 0 && !layout.from_left) {
            filled += text.left(surplus);
            taken = surplus;
        }
        if (place++ >= blanks && taken < text.size())
            filled += text[taken++];
        else if (letter.letter == u'@')
            filled += u' ';
    }
    return filled + text.mid(taken);
}

} // namespace

QString Formatted_Text(const QString& text, const std::vector<Pattern_Letters>& sections)
{
    const auto& section = text.isEmpty() && sections.size() > 1 ? sections[1] : sections[0];
    const auto layout = Layout_Of(section);
    return Filled(In_Case(text, layout.letter_case), section, layout);
}

} // namespace Formula
