#include "catalogue/Search.h"
#include "frame/command/Command_Line.h"
#include "frame/command/Terminal.h"
#include "frame/text/Text_Utilities.h"

namespace {

Exit_Status Print_Result(const Search_Result& result, bool as_json)
{
    for (const File_Entry& entry : result.files) {
        if (as_json)
            Print_Json({{QStringLiteral("file"), entry.Path_Name}, {QStringLiteral("size_kb"), entry.File_Size_KB}});
        else
            Print_Line(entry.Path_Name);
    }
    for (const QString& folder : result.unread) Print_Message(folder, QStringLiteral("the folder cannot be read"));
    if (result.stopped) Print_Message({}, QStringLiteral("interrupted, the search is not complete"));
    return result.stopped || !result.unread.isEmpty() ? Exit_Status::Some_Failed : Exit_Status::All_Done;
}

} // namespace

Exit_Status Run_Search_Command(const QStringList& arguments)
{
    Command_Line line("search", Command_Line::Takes::Nothing_More);
    line.Add_Fixed(QStringLiteral("names or descriptions"));
    line.Add_Fixed(QStringLiteral("PATTERN"));
    line.Add_Fixed(QStringLiteral("FOLDER"));
    line.Add_Value(QStringLiteral("files"), QStringLiteral("Look at files of these PATTERNS only, \"*.jpg;*.tif\"."),
                   QStringLiteral("PATTERNS"));
    if (const auto end = line.Parse(arguments)) return *end;
    if (line.Fixed(0) != u"names" && line.Fixed(0) != u"descriptions")
        return line.Complain(QStringLiteral("names or descriptions is missing"));
    if (!Like_Pattern::Compile(line.Fixed(1), Like_Pattern::Compare::Text))
        return line.Complain(QStringLiteral("no pattern: %1").arg(line.Fixed(1)));
    const Search_Request request{
        .kind = line.Fixed(0) == u"names" ? Search_Kind::Names : Search_Kind::Descriptions,
        .folder = line.Fixed(2),
        .patterns = line.Value(QStringLiteral("files")),
        .criteria = line.Fixed(1),
    };
    Progress_Line progress;
    const auto result = Search_Files(request, [&progress](const Search_Progress& state) {
        progress.Show(state.found, state.files, state.folder);
        return !Is_Interrupted();
    });
    if (result) return Print_Result(*result, line.Wants_Json());
    Print_Message(line.Fixed(2), QString::fromStdString(result.error().text));
    return Exit_Status::Some_Failed;
}
