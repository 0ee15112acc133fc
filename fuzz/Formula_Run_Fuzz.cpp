// Any program ends, in bounded time and memory, with a value or an error.

#include "evaluate/System_Host.h"
#include "evaluate/bkcEvaluate.h"

#include <cstdlib>

using namespace Formula;

namespace {

/// Time stands still and nothing outside is reached, so that a finding can be repeated.
class Still_Host final : public System_Host {
public:
    QDateTime Now() override { return QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26)); }
    QString Input_Box(const Host_Input_Question&) override { return QStringLiteral("5"); }
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    setenv("HALVINE_LIMIT_FORMULA_STRING_CHARACTERS", "100000", 1);
    setenv("HALVINE_LIMIT_FORMULA_ARRAY_ELEMENTS", "10000", 1);
    setenv("HALVINE_LIMIT_FORMULA_BYTES", "8000000", 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1) return 0;
    Still_Host host;
    bkcEvaluate evaluator(host);
    evaluator.Set_InstructionLimit(5000);
    evaluator.Set_AllowedAccess(All_Access & ~unsigned(Access_Class::Files));
    evaluator.Set_RaiseErrors((data[0] & 1) != 0);
    evaluator.Set_PromptUninitialized((data[0] & 2) != 0);
    (void)evaluator.AddVariable(QStringLiteral("FileName"), Variant(QStringLiteral("IMG_0001")));
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data + 1), qsizetype(size) - 1);
    if ((data[0] & 4) != 0) {
        evaluator.Value(text);
        evaluator.Value();
    } else {
        evaluator.Execute(text);
        evaluator.Execute();
    }
    if ((data[0] & 8) != 0)
        for (int step = 0; step < 100 && evaluator.ExecuteStep(); ++step) {
        }
    return 0;
}
