#include "frame/command/File_Jobs.h"

#include "frame/command/Terminal.h"
#include "imaging/Brennick_Image_Utilities.h"

Exit_Status For_Each_File(const QStringList& files, const std::function<Result<void>(const QString& file)>& job)
{
    Progress_Line progress;
    Exit_Status status = Exit_Status::All_Done;
    int done = 0;
    for (const QString& file : files) {
        if (Is_Interrupted()) {
            Print_Message({}, QStringLiteral("interrupted, %1 of %2 files done").arg(done).arg(files.size()));
            return Exit_Status::Some_Failed;
        }
        progress.Show(++done, int(files.size()), file);
        if (const auto result = job(file); !result) {
            Print_Message(file, QString::fromStdString(result.error().text));
            status = Exit_Status::Some_Failed;
        }
    }
    return status;
}

tl::unexpected<Error> Image_Failure()
{
    return Failure(Last_Image_Error().toStdString());
}
