// hv eval. The arguments are read here and not by the common reader: a formula may begin with a sign.

#include "evaluate/Formula_Consent.h"
#include "evaluate/Scanner.h"
#include "evaluate/System_Host.h"
#include "evaluate/bkcEvaluate.h"
#include "evaluate/library/Library.h"
#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Dates.h"
#include "evaluate/variant/Variant_Array.h"
#include "frame/Qt_Settings.h"
#include "frame/command/Command.h"
#include "frame/command/Terminal.h"
#include "frame/files/Limits.h"
#include "frame/files/Regular_File.h"
#include "frame/text/Text_Utilities.h"

#include <QtCore/QJsonArray>

using namespace Formula;

namespace {

constexpr const char* Help =
    "Usage: hv eval [OPTIONS] TEXT\n"
    "Print the value of a formula.\n\n"
    "  --program                  TEXT is a program; its value is that of the formula it begins with, as in \"=1+2\"\n"
    "  -f FILE                    take the text from a file; it may read nothing but the clock unless allowed\n"
    "  -v NAME=TEXT               set a variable to a text\n"
    "  -n NAME=NUMBER             set a variable to a number\n"
    "  -i NAME=INTEGER            set a variable to a 16-bit number\n"
    "  -d NAME=DATE               set a variable to a date\n"
    "  --null NAME                set a variable to Null\n"
    "  --print NAME               print a variable after the run\n"
    "  --allow-formula LIST       what a formula from a file may read: files,environment,settings\n"
    "  --json                     print one JSON object a line\n"
    "  --                         what follows is TEXT";

/// A message box is a line on standard error.
class Terminal_Host final : public System_Host {
public:
    using System_Host::System_Host;
    int Message_Box(const Host_Message& message) override
    {
        Print_Message({}, message.prompt);
        return 1;
    }
};

struct Eval_Job {
    std::optional<QString> text, file;
    bool program = false, help = false, json = false;
    std::vector<std::pair<QString, Variant>> variables;
    QStringList printed;
    unsigned allowed = 0;
    QString fault; ///< empty when the arguments are right
};

Evaluated<Variant> Number_Value(const QString& text)
{
    if (!text.contains(u'.'))
        if (const Evaluated<std::int32_t> whole = Formula::Long_From_Text(text)) return Variant(*whole);
    return Number_From_Text(text).map([](double number) { return Variant(number); });
}

Evaluated<Variant> Variable_Of(const QString& option, const QString& text)
{
    if (option == u"-v") return Variant(text);
    if (option == u"-n") return Number_Value(text);
    if (option == u"-i") return Integer_From_Text(text).map([](std::int16_t number) { return Variant(number); });
    return Date_From_Text(text, This_Year()).map([](double days) { return Variant(Date_Value{days}); });
}

/// A name that a formula can say; no other could ever be read.
bool Is_Variable_Name(const QString& name)
{
    return !name.isEmpty() && Scanner(name).Next().name == name;
}

/// False, with the reason, when no formula could read it.
bool Check_Name(const QString& option, const QString& name, Eval_Job& job)
{
    if (Is_Variable_Name(name)) return true;
    job.fault = QStringLiteral("%1: \"%2\" is no name for a variable").arg(option, name);
    return false;
}

void Read_Variable(const QString& option, const QString& argument, Eval_Job& job)
{
    const qsizetype equals = argument.indexOf(u'=');
    if (equals < 1) {
        job.fault = QStringLiteral("%1 needs NAME=VALUE").arg(option);
        return;
    }
    const QString name = argument.left(equals), text = argument.mid(equals + 1);
    if (!Check_Name(option, name, job)) return;
    const Evaluated<Variant> value = Variable_Of(option, text);
    if (value)
        job.variables.emplace_back(name, *value);
    else
        job.fault = QStringLiteral("%1 %2: \"%3\": %4")
                        .arg(option, name, text, QString::fromUtf8(Error_Description(value.error())));
}

void Read_Null(const QString& name, Eval_Job& job)
{
    if (Check_Name(QStringLiteral("--null"), name, job)) job.variables.emplace_back(name, Variant::Null());
}

void Read_Allowed(const QString& list, Eval_Job& job)
{
    if (const std::optional<unsigned> access = Access_From_List(list))
        job.allowed |= *access;
    else
        job.fault = QStringLiteral("--allow-formula knows files, environment and settings, not \"%1\"").arg(list);
}

void Read_Valued_Option(const QString& option, const QString& value, Eval_Job& job)
{
    if (option == u"-f")
        job.file = value;
    else if (option == u"--null")
        Read_Null(value, job);
    else if (option == u"--print")
        job.printed += value;
    else if (option == u"--allow-formula")
        Read_Allowed(value, job);
    else
        Read_Variable(option, value, job);
}

void Read_Text(const QString& text, Eval_Job& job)
{
    if (job.text) job.fault = QStringLiteral("more than one formula");
    job.text = text;
}

bool Read_Flag(const QString& option, Eval_Job& job)
{
    if (option == u"--program")
        job.program = true;
    else if (option == u"--json")
        job.json = true;
    else if (option == u"--help" || option == u"-h")
        job.help = true;
    else
        return false;
    return true;
}

/// Reads what stands at a place and moves behind it. "--print=x" is "--print x".
void Read_Argument(const QStringList& arguments, qsizetype& place, Eval_Job& job)
{
    static const QStringList valued = {
        QStringLiteral("-f"), QStringLiteral("-v"),     QStringLiteral("-n"),      QStringLiteral("-i"),
        QStringLiteral("-d"), QStringLiteral("--null"), QStringLiteral("--print"), QStringLiteral("--allow-formula")};
    const QString& argument = arguments[place++];
    if (Read_Flag(argument, job)) return;
    const bool is_long = argument.startsWith(u"--");
    const QString option = is_long ? argument.section(u'=', 0, 0) : argument;
    if (argument == u"--")
        while (place < arguments.size()) Read_Text(arguments[place++], job);
    else if (!valued.contains(option) && is_long)
        job.fault = QStringLiteral("unknown option %1").arg(argument);
    else if (!valued.contains(option))
        Read_Text(argument, job);
    else if (option != argument)
        Read_Valued_Option(option, argument.mid(option.size() + 1), job);
    else if (place == arguments.size())
        job.fault = QStringLiteral("%1 needs a value").arg(argument);
    else
        Read_Valued_Option(option, arguments[place++], job);
}

Eval_Job Read_Arguments(const QStringList& arguments)
{
    Eval_Job job;
    for (qsizetype place = 0; place < arguments.size() && job.fault.isEmpty();) Read_Argument(arguments, place, job);
    if (job.fault.isEmpty() && bool(job.text) == bool(job.file))
        job.fault = QStringLiteral("either a formula or -f FILE is needed");
    return job;
}

void Print_Value(const Variant& value)
{
    if (value.Is_Array()) {
        for (const Variant& element : value.Array().elements) Print_Value(element);
        return;
    }
    Print_Line(value.Is_Null() ? QStringLiteral("Null") : To_Display_Text(value).value_or(QString()));
}

/// Numbers, Booleans and Null as JSON has them, an array as a list of its elements, all else as a text.
QJsonValue Json_Of(const Variant& value)
{
    if (value.Is_Array()) {
        QJsonArray list;
        for (const Variant& element : value.Array().elements) list.append(Json_Of(element));
        return list;
    }
    switch (value.Type()) {
    case Variant_Type::Null: return QJsonValue::Null;
    case Variant_Type::Boolean: return value.Boolean();
    case Variant_Type::Byte:
    case Variant_Type::Integer:
    case Variant_Type::Long:
    case Variant_Type::Single:
    case Variant_Type::Double: return To_Double(value).value_or(0);
    default: return To_Display_Text(value).value_or(QString());
    }
}

/// name  of a variable; empty for the value of the formula
void Print_Result(const QString& name, const Variant& value, bool as_json)
{
    if (!as_json) return Print_Value(value);
    QJsonObject object{{QStringLiteral("type"), Type_Name(value.Type())}, {QStringLiteral("value"), Json_Of(value)}};
    if (!name.isEmpty()) object.insert(QStringLiteral("name"), name);
    Print_Json(object);
}

Result<QString> Read_Formula_File(const QString& path)
{
    const auto file = Regular_File::Open(path.toStdString());
    if (!file) return tl::make_unexpected(file.error());
    const auto bytes = file->Read_All(Current_Limits().document_bytes);
    if (!bytes) return tl::make_unexpected(bytes.error());
    return Decode_Text(QByteArray(reinterpret_cast<const char*>(bytes->data()), qsizetype(bytes->size())));
}

Exit_Status Print_Error(int code, const QString& text, int position)
{
    Print_Message({}, QStringLiteral("error %1: %2 (at character position %3)")
                          .arg(QString::number(code), text, QString::number(position)));
    return Exit_Status::Some_Failed;
}

/// One that is unknown is told by its name; the others are printed all the same.
Exit_Status Print_Variables(const bkcEvaluate& evaluator, const QStringList& names, bool as_json)
{
    Exit_Status status = Exit_Status::All_Done;
    for (const QString& name : names) {
        if (const auto value = evaluator.Variable(name)) {
            Print_Result(name, *value, as_json);
        } else {
            Print_Message(name, QString::fromUtf8(Error_Description(value.error())));
            status = Exit_Status::Some_Failed;
        }
    }
    return status;
}

/// What the user types may use everything; there are no dialogs here that could disturb anybody. Nothing is an array
/// before the run, so that every variable takes its value.
Exit_Status Run_Job(const Eval_Job& job, const QString& text)
{
    Qt_Settings settings;
    Terminal_Host host(&settings);
    bkcEvaluate evaluator(host);
    evaluator.Set_PromptUninitialized(false);
    if (job.file) evaluator.Set_AllowedAccess(File_Access | job.allowed);
    for (const auto& [name, value] : job.variables) (void)evaluator.AddVariable(name, value);
    const bool compiled = job.program ? evaluator.Program(text) : evaluator.Expression(text);
    const Variant value = !compiled ? Variant() : job.program ? evaluator.ProgramValue() : evaluator.Value();
    const Evaluation_Error& error = evaluator.Last_Error();
    if (error.Code != 0) return Print_Error(error.Code, error.Description, error.Position);
    if (!job.program || evaluator.Variable(QStringLiteral("=Value"))) Print_Result({}, value, job.json);
    return Print_Variables(evaluator, job.printed, job.json);
}

} // namespace

Exit_Status Run_Eval_Command(const QStringList& arguments)
{
    const Eval_Job job = Read_Arguments(arguments);
    if (job.help) {
        Print_Line(QString::fromLatin1(Help));
        return Exit_Status::All_Done;
    }
    if (!job.fault.isEmpty()) {
        Print_Message({}, job.fault + QStringLiteral(" (see hv eval --help)"));
        return Exit_Status::Wrong_Usage;
    }
    if (!job.file) return Run_Job(job, *job.text);
    const Result<QString> text = Read_Formula_File(*job.file);
    if (text) return Run_Job(job, *text);
    Print_Message(*job.file, QString::fromStdString(text.error().text));
    return Exit_Status::Some_Failed;
}
