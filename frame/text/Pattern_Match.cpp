#include "frame/text/Pattern_Match.h"

// A pattern is a row of elements; the set of rows' places that a text can have reached is kept as one flag an element and
// carried on character by character. No text and no pattern makes that slower than one times the other.

struct Like_Pattern::Search {
    const Like_Pattern& pattern;
    bool backwards = false;
    std::vector<char> reached{}; ///< reached[i]: the first i elements fit

    const Element& At(std::size_t i) const
    {
        return pattern.elements_[backwards ? pattern.elements_.size() - 1 - i : i];
    }
    std::size_t Size() const { return pattern.elements_.size(); }

    void Start()
    {
        reached.assign(Size() + 1, 0);
        Reach_Start();
    }
    void Reach_Start()
    {
        reached[0] = 1;
        Pass_Empty_Runs();
    }
    void Pass_Empty_Runs()
    {
        for (std::size_t i = 0; i < Size(); ++i)
            if (reached[i] && At(i).kind == Element::Kind::Run) reached[i + 1] = 1;
    }
    void Take(char16_t character)
    {
        for (std::size_t i = Size(); i-- > 0;) {
            // Backwards over the places, so that each still tells what was reached before this character.
            const Element& element = At(i);
            const bool by_run = element.kind == Element::Kind::Run && (reached[i] || reached[i + 1]);
            const bool by_step = element.kind != Element::Kind::Run && reached[i] && pattern.Fits(element, character);
            reached[i + 1] = by_run || by_step;
        }
        reached[0] = 0;
        Pass_Empty_Runs();
    }
    bool Is_Accepting() const { return reached[Size()]; }
};

char16_t Like_Pattern::Folded(char16_t character) const
{
    return compare_ == Compare::Text ? QChar(character).toCaseFolded().unicode() : character;
}

bool Like_Pattern::Read_List(const QString& pattern, int& index, Element& element)
{
    const auto close = pattern.indexOf(u']', index + 1);
    if (close < 0) return false;
    QString list = pattern.mid(index + 1, close - index - 1);
    index = int(close);
    element.kind = Element::Kind::List;
    element.negated = list.size() > 1 && list.startsWith(u'!');
    if (element.negated) list.remove(0, 1);
    for (qsizetype i = 0; i < list.size(); ++i) {
        const char16_t low = list[i].unicode();
        const bool is_range = i + 2 < list.size() && list[i + 1] == u'-';
        const char16_t high = is_range ? list[i + 2].unicode() : low;
        if (high < low) return false;
        element.ranges.emplace_back(low, high);
        if (is_range) i += 2;
    }
    return true;
}

std::optional<Like_Pattern> Like_Pattern::Compile(const QString& pattern, Compare compare)
{
    Like_Pattern compiled;
    compiled.compare_ = compare;
    for (int index = 0; index < pattern.size(); ++index) {
        Element element;
        const char16_t c = pattern[index].unicode();
        if (c == u'*')
            element.kind = Element::Kind::Run;
        else if (c == u'?')
            element.kind = Element::Kind::One;
        else if (c == u'#')
            element.kind = Element::Kind::Digit;
        else if (c != u'[')
            element = {.kind = Element::Kind::Character, .character = compiled.Folded(c)};
        else if (!Read_List(pattern, index, element))
            return {};
        const bool is_nothing = element.kind == Element::Kind::List && element.ranges.empty();
        const bool is_same_run = element.kind == Element::Kind::Run && !compiled.elements_.empty() &&
                                 compiled.elements_.back().kind == Element::Kind::Run;
        if (!is_nothing && !is_same_run) compiled.elements_.push_back(std::move(element));
    }
    return compiled;
}

bool Like_Pattern::Fits(const Element& element, char16_t character) const
{
    switch (element.kind) {
    case Element::Kind::Character: return Folded(character) == element.character;
    case Element::Kind::One: return true;
    case Element::Kind::Digit: return character >= u'0' && character <= u'9';
    case Element::Kind::Run: return true;
    case Element::Kind::List: break;
    }
    const char16_t lower = compare_ == Compare::Text ? QChar(character).toLower().unicode() : character;
    const char16_t upper = compare_ == Compare::Text ? QChar(character).toUpper().unicode() : character;
    for (const auto& [low, high] : element.ranges)
        for (const char16_t c : {character, lower, upper})
            if (c >= low && c <= high) return !element.negated;
    return element.negated;
}

bool Like_Pattern::Matches(QStringView text) const
{
    Search search{*this};
    search.Start();
    for (const QChar c : text) search.Take(c.unicode());
    return search.Is_Accepting();
}

Like_Pattern::Part Like_Pattern::First_In(const QString& text, int position) const
{
    const int first = std::max(position, 1);
    Search forwards{*this};
    forwards.Start();
    for (int end = first; end <= text.size(); ++end) {
        forwards.Take(text[end - 1].unicode());
        if (forwards.Is_Accepting()) {
            Search search{*this, true};
            search.Start();
            for (int begin = end; begin >= first; --begin) {
                search.Take(text[begin - 1].unicode());
                if (search.Is_Accepting()) return {begin, end};
            }
        }
        forwards.Reach_Start();
    }
    return {};
}

Like_Pattern::Part Like_Pattern::Last_In(const QString& text, int position) const
{
    const int last = position <= 0 ? int(text.size()) : std::min(position, int(text.size()));
    Search search{*this, true};
    search.Start();
    for (int begin = last; begin >= 1; --begin) {
        search.Take(text[begin - 1].unicode());
        if (search.Is_Accepting()) {
            Search forwards{*this};
            forwards.Start();
            for (int end = begin; end <= last; ++end) {
                forwards.Take(text[end - 1].unicode());
                if (forwards.Is_Accepting()) return {begin, end};
            }
        }
        search.Reach_Start();
    }
    return {};
}

bool Like(const QString& text, const QString& pattern, Like_Pattern::Compare compare)
{
    const auto compiled = Like_Pattern::Compile(pattern, compare);
    return compiled && compiled->Matches(text);
}
