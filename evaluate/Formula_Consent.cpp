#include "evaluate/Formula_Consent.h"

#include "evaluate/Compiler.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QSet>
#include <algorithm>

namespace Formula {

namespace {

const QString Consent_Key = QStringLiteral("Formula Consent");     // beside the tree that GetSetting reads, not in it
constexpr qsizetype Most_Name_Shown = 120, Most_Text_Shown = 1000; // characters

struct Grant_Row {
    Access_Class access;
    QLatin1StringView word;  ///< in lists and in the settings
    QLatin1StringView shown; ///< in the question
};

constexpr Grant_Row Grants[] = {
    {Access_Class::Files, QLatin1StringView("files"), QLatin1StringView("the names, sizes and dates of your files")},
    {Access_Class::Environment, QLatin1StringView("environment"),
     QLatin1StringView("the environment variables of the program")},
    {Access_Class::Settings, QLatin1StringView("settings"),
     QLatin1StringView("the settings that are kept for formulas")},
};
static_assert((unsigned(Access_Class::Files) | unsigned(Access_Class::Environment) |
               unsigned(Access_Class::Settings)) == Grantable_Access);

QStringList Columns_Of(unsigned access, QLatin1StringView Grant_Row::*column)
{
    QStringList list;
    for (const Grant_Row& row : Grants)
        if (access & unsigned(row.access)) list += row.*column;
    return list;
}

unsigned Access_Of(const Code_Record& record)
{
    const Token_Word word = record.Token;
    if (word == Token::Beep) return unsigned(Beep_Access);
    if (word == Token::Randomize && record.Operand.Long() == 0) return unsigned(Access_Class::Clock);
    if (Class_Of(word) == Token_Class::Niladic) return unsigned(Access_Class::Clock);
    if (Class_Of(word) != Token_Class::Function || word == Token::Call) return unsigned(Access_Class::Pure);
    const Built_In* built_in = Function_Rows()[std::size_t(Function_Row_Of(word))].built_in;
    return unsigned(built_in ? built_in->access : Access_Class::Pure);
}

void Add(QCryptographicHash& hash, const QString& text)
{
    hash.addData(QByteArrayView(reinterpret_cast<const char*>(text.utf16()), text.size() * 2));
}

/// The length stands before the name, so that no other name and text give the same bytes.
QString Digest_Of(const QString& name, const QString& text)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    Add(hash, QString::number(name.size()) + u':');
    Add(hash, name);
    Add(hash, text);
    return QString::fromLatin1(hash.result().toHex());
}

/// Without line ends and without characters that are not seen or that turn the others round: a text from a file must not
/// be able to write lines of the question itself. A window may break it anywhere, so that it grows no wider than usual.
QString Shown(const QString& text, qsizetype most)
{
    constexpr int Longest_Run = 40;
    QString shown;
    int run = 0;
    for (char32_t character : text.left(most).toUcs4()) {
        if (QChar::isSpace(character)) character = U' ';
        shown += QString::fromUcs4(QChar::isPrint(character) ? &character : U"\uFFFD", 1);
        run = character == U' ' ? 0 : run + 1;
        if (run % Longest_Run == Longest_Run - 1) shown += QChar(0x200B); // of no width, a place for a line end
    }
    const qsizetype hidden = text.size() - most;
    if (hidden > 0) shown += QStringLiteral(" … and %1 characters more").arg(hidden);
    return shown;
}

QString Question_For(const Named_Formula& formula, unsigned access)
{
    return QStringLiteral(
               "A formula of this file wants more than the facts of a picture. Allow it?\n\n"
               "Name: %1\n\nFormula: %2\n\nIt wants to read %3.\n\n"
               "Yes holds for this formula from now on. No opens the file and refuses it that. Cancel leaves "
               "the file unopened.")
        .arg(Shown(formula.name, Most_Name_Shown), Shown(formula.text, Most_Text_Shown),
             Columns_Of(access, &Grant_Row::shown).join(QStringLiteral(", and ")));
}

} // namespace

unsigned Access_Used(const Program_Code& code)
{
    unsigned used = unsigned(Access_Class::Pure);
    for (std::size_t index = 1; index < code.code.size(); ++index) used |= Access_Of(code.code[index]);
    return used;
}

unsigned Access_Used(const QString& text)
{
    Program_Code code;
    return Compiler(code, text).Compile_Single_Expression() ? Access_Used(code) : unsigned(Access_Class::Pure);
}

std::optional<unsigned> Access_From_List(const QString& list)
{
    unsigned access = 0;
    for (const QString& word : list.split(u',')) {
        const auto row = std::ranges::find_if(Grants, [&](const Grant_Row& grant) {
            return word.trimmed().compare(grant.word, Qt::CaseInsensitive) == 0;
        });
        if (row == std::end(Grants)) return std::nullopt;
        access |= unsigned(row->access);
    }
    return access;
}

unsigned Formula_Consent::Allowed_Access(const QString& name, const QString& text) const
{
    const QString granted = settings_.Read_Value(Consent_Key, Digest_Of(name, text));
    return File_Access | Access_From_List(granted).value_or(0);
}

unsigned Formula_Consent::Missing_Access(const QString& name, const QString& text) const
{
    return Access_Used(text) & Grantable_Access & ~Allowed_Access(name, text);
}

bool Formula_Consent::Needs_Question(const QString& name, const QString& text) const
{
    return Missing_Access(name, text) != 0;
}

bool Formula_Consent::Ask_About(std::span<const Named_Formula> formulas)
{
    QSet<QString> asked;
    for (const Named_Formula& formula : formulas) {
        const QString digest = Digest_Of(formula.name, formula.text);
        if (asked.contains(digest) || !Needs_Question(formula.name, formula.text)) continue;
        asked.insert(digest);
        const unsigned access = Access_Used(formula.text) & Grantable_Access;
        const Message_Answer answer = dialogs_.Ask({.text = Question_For(formula, access),
                                                    .buttons = Message_Buttons::Yes_No_Cancel,
                                                    .standard = Message_Answer::No,
                                                    .icon = Message_Icon::Question});
        if (answer == Message_Answer::Cancel) return false;
        if (answer == Message_Answer::Yes && Remember(formula.name, formula.text, access) != 0)
            dialogs_.Refuse(QStringLiteral("The answer could not be stored. The formula stays without access."));
    }
    return true;
}

int Formula_Consent::Remember_Typed(const QString& name, const QString& text)
{
    return Remember(name, text, Missing_Access(name, text) == 0 ? 0 : Access_Used(text) & Grantable_Access);
}

int Formula_Consent::Remember(const QString& name, const QString& text, unsigned access)
{
    if (access == 0) return 0; // nothing to allow leaves no trace in the settings
    return settings_.Write_Value(Consent_Key, Digest_Of(name, text), Columns_Of(access, &Grant_Row::word).join(u','));
}

} // namespace Formula
