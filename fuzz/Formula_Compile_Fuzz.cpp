// Any text compiles, as an expression and as a program, or is refused with a code, a message and a position in the text.

#include "evaluate/System_Host.h"
#include "evaluate/bkcEvaluate.h"

#include <cstdlib>

using namespace Formula;

namespace {

void Check(const bkcEvaluate& evaluator, bool compiled, qsizetype length)
{
    const Evaluation_Error& error = evaluator.Last_Error();
    const bool refused =
        error.Code != 0 && !error.Description.isEmpty() && error.Position >= 1 && error.Position <= int(length) + 1;
    if (compiled ? error.Code != 0 : !refused) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    System_Host host;
    bkcEvaluate evaluator(host);
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    Check(evaluator, evaluator.Expression(text), text.size());
    Check(evaluator, evaluator.Program(text), text.size());
    return 0;
}
