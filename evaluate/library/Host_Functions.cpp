#include "evaluate/library/Arguments.h"
#include "evaluate/library/Built_In_Routines.h"
#include "evaluate/variant/Like.h"
#include "evaluate/variant/Variant_Array.h"
#include "frame/text/Path_Utilities.h"

// Built-ins that reach outside the formula. Every one of them goes through the host's services.
namespace Formula {

namespace {

constexpr int Hidden = 2, System = 4, Volume = 8, Directory = 16;

// Files with these attributes are listed only when they are asked for.
constexpr int Special_Attributes = Hidden | System | Directory;

// Only "*" and "?" mean something in a file name; brackets and "#" stand for themselves.
QString As_Like_Pattern(const QString& pattern)
{
    QString like;
    for (const auto c : pattern) {
        if (c == u'[' || c == u'#')
            like += QStringLiteral("[%1]").arg(c);
        else
            like += c;
    }
    return like;
}

QStringList Matching_Entries(Formula_Host_Services& services, const QString& path, int attributes)
{
    const QString folder = Folder_Part(path), pattern = Name_Part(path);
    QStringList names;
    if (attributes & Volume) return names; // volumes have no names here
    const auto entries = services.Folder_Entries(folder.isEmpty() ? services.Current_Folder(QString()) : folder);
    if (!entries) return names;
    const bool is_any = pattern.isEmpty() || pattern == QLatin1StringView("*.*");
    const auto like = is_any ? QStringLiteral("*") : As_Like_Pattern(pattern);
    for (const auto& entry : *entries) {
        const bool is_wanted = (entry.attributes & Special_Attributes & ~attributes) == 0;
        if (is_wanted && Is_Like(entry.name, like, Compare_Mode::Text).value_or(false)) names += entry.name;
    }
    return names;
}

Evaluated<Host_File_Facts> Facts_At(Library_Context& context, Arguments arguments)
{
    const auto path = To_Text(arguments[0]);
    if (!path) return Fails(path.error());
    const auto facts = context.services.File_Facts(*path);
    if (!facts) return Fails(Error_Number::File_Not_Found);
    return *facts;
}

// A help context goes with a help file only, as the dialog has it.
bool Has_Lonely_Help(Arguments arguments, std::size_t help_file)
{
    return Has(arguments, help_file) != Has(arguments, help_file + 1);
}

} // namespace

Error_Number Run_CurDir(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto drive = Text_At(arguments, 0);
    FORMULA_CHECK(drive);
    return Yield(result, context.services.Current_Folder(*drive));
}

// With a path the first name that matches; without, the next one. 5 when there was no first call.
Error_Number Run_Dir(Library_Context& context, Arguments arguments, Variant& result)
{
    auto& pending = context.pending_folder_entries;
    if (Has(arguments, 0)) {
        const auto path = To_Text(arguments[0]);
        FORMULA_CHECK(path);
        const auto attributes = Long_At(arguments, 1);
        FORMULA_CHECK(attributes);
        pending = Matching_Entries(context.services, *path, *attributes);
        pending.append(QString()); // the end, given out once
    }
    if (pending.isEmpty()) return Error_Number::Invalid_Call;
    return Yield(result, pending.takeFirst());
}

Error_Number Run_Environ(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto name = To_Text(arguments[0]);
    FORMULA_CHECK(name);
    if (name->isEmpty()) return Error_Number::Invalid_Call;
    return Yield(result, context.services.Environment_Value(*name));
}

Error_Number Run_FileLen(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto facts = Facts_At(context, arguments);
    FORMULA_CHECK(facts);
    if (facts->size != std::int32_t(facts->size)) return Error_Number::Overflow;
    return Yield(result, std::int32_t(facts->size));
}

Error_Number Run_FileDateTime(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto facts = Facts_At(context, arguments);
    FORMULA_CHECK(facts);
    return Yield(result, Date_Value{Days_From(facts->modified)});
}

Error_Number Run_GetAttr(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto facts = Facts_At(context, arguments);
    FORMULA_CHECK(facts);
    return Yield(result, std::int16_t(facts->attributes));
}

Error_Number Run_GetSetting(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto application = Text_At(arguments, 0), section = Text_At(arguments, 1), key = Text_At(arguments, 2);
    FORMULA_CHECK(application);
    FORMULA_CHECK(section);
    FORMULA_CHECK(key);
    const auto standard = Text_At(arguments, 3);
    FORMULA_CHECK(standard);
    return Yield_Text(result, context.services.Setting(*application, *section, *key).value_or(*standard));
}

// Rows of key and value; Empty when there are none.
Error_Number Run_GetAllSettings(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto application = Text_At(arguments, 0), section = Text_At(arguments, 1);
    FORMULA_CHECK(application);
    FORMULA_CHECK(section);
    const auto rows = context.services.All_Settings(*application, *section);
    if (rows.empty()) return Error_Number::None;
    const Array_Bound bounds[] = {{0, std::int64_t(rows.size())}, {0, 2}};
    auto table = Make_Array(bounds);
    FORMULA_CHECK(table);
    auto& elements = table->Writable_Array().elements;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        elements[i] = Variant(rows[i].first);
        elements[rows.size() + i] = Variant(rows[i].second);
    }
    result = std::move(*table);
    return Error_Number::None;
}

Error_Number Run_InputBox(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto prompt = Text_At(arguments, 0), title = Text_At(arguments, 1), text = Text_At(arguments, 2);
    FORMULA_CHECK(prompt);
    FORMULA_CHECK(title);
    FORMULA_CHECK(text);
    if (Has_Lonely_Help(arguments, 5)) return Error_Number::Invalid_Call;
    return Yield_Text(result, context.services.Input_Box({*prompt, *title, *text}));
}

Error_Number Run_MsgBox(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto prompt = Text_At(arguments, 0), title = Text_At(arguments, 2);
    FORMULA_CHECK(prompt);
    FORMULA_CHECK(title);
    const auto buttons = Long_At(arguments, 1);
    FORMULA_CHECK(buttons);
    if (Has_Lonely_Help(arguments, 3)) return Error_Number::Invalid_Call;
    return Yield(result, std::int32_t(context.services.Message_Box({*prompt, *title, *buttons})));
}

} // namespace Formula
