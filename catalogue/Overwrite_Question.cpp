#include "catalogue/Overwrite_Question.h"

Overwrite_Question::Answer Overwrite_Question::Ask(const QString& target, const QString& source)
{
    if (all_ && !written_.contains(target)) return Answer::Overwrite;
    const QString prompt =
        QStringLiteral("Do you wish to overwrite ") + target + QStringLiteral(" with \r\n") + source + QLatin1Char('?');
    switch (dialogs_.Yes_Yes_To_All_No_Cancel_Dialog(caption_, prompt)) {
    case Response_Code::Yes_To_All: all_ = true; return Answer::Overwrite;
    case Response_Code::Yes: return Answer::Overwrite;
    case Response_Code::No: return Answer::Leave;
    case Response_Code::None:
    case Response_Code::Cancel: break;
    }
    return Answer::End;
}
