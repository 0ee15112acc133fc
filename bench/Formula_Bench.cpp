// The formula language beside Lua 5.4 in one run: the same loops, calls and texts, and the rename formula by itself.
//   formula_bench [repeats [part of a name]]
// Each line: what, our time, Lua's time, their ratio. The best of the repeats counts. With a part of a name only what has it
// in its name is run.

#include "evaluate/System_Host.h"
#include "evaluate/bkcEvaluate.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <lua.hpp>

using namespace Formula;

namespace {

template <class Work>
double Best_Seconds(int repeats, Work work)
{
    double best = 1e9;
    for (int i = 0; i < repeats; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        work();
        best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
    }
    return best;
}

struct Pair {
    const char *name, *ours, *lua;
};

constexpr Pair Pairs[] = {
    {"counting loop, 2 000 000 turns", "i = 0\nx = 0\nFor i = 1 To 2000000\nx = x + i Mod 7\nNext",
     "local x = 0\nfor i = 1, 2000000 do x = x + i % 7 end"},
    {"counting loop, plain", "i = 0\nx = 0.0\nFor i = 1 To 2000000\nx = x + i\nNext",
     "local x = 0.0\nfor i = 1, 2000000 do x = x + i end"},
    {"fib(24)",
     "x = Fib(24)\nEnd\nFunction Fib(ByVal n)\nIf n < 2 Then\nFib = n\nElse\nFib = Fib(n - 1) + Fib(n - 2)\nEnd If\n"
     "End Function",
     "local function fib(n) if n < 2 then return n else return fib(n - 1) + fib(n - 2) end end\nlocal x = fib(24)"},
    {"building a text of 20 000 characters", "i = 0\ns = \"\"\nFor i = 1 To 20000\ns = s & \"x\"\nNext",
     "local s = \"\"\nfor i = 1, 20000 do s = s .. \"x\" end"},
};

void Run_Pair(const Pair& pair, int repeats)
{
    System_Host host;
    bkcEvaluate evaluator(host);
    if (!evaluator.Program(QString::fromLatin1(pair.ours))) std::abort();
    const double ours = Best_Seconds(repeats, [&] {
        if (!evaluator.Execute()) std::abort();
    });
    lua_State* lua = luaL_newstate();
    luaL_openlibs(lua);
    if (luaL_loadstring(lua, pair.lua) != LUA_OK) std::abort();
    const double theirs = Best_Seconds(repeats, [&] {
        lua_pushvalue(lua, -1);
        if (lua_pcall(lua, 0, 0, 0) != LUA_OK) std::abort();
    });
    lua_close(lua);
    std::printf("%-40s %9.2f ms %9.2f ms %6.2f\n", pair.name, ours * 1e3, theirs * 1e3, ours / theirs);
}

constexpr const char* Rename_Name = "the rename formula";

void Run_Rename_Formula(int repeats)
{
    System_Host host;
    bkcEvaluate evaluator(host);
    if (!evaluator.Expression(
            QStringLiteral("ChangeTo & \"-\" & Format(FileDate, \"yyyymmdd\")  & \"-\" & FileSerial")))
        std::abort();
    const QString change_to = QStringLiteral("ChangeTo"), date = QStringLiteral("FileDate"),
                  serial = QStringLiteral("FileSerial");
    (void)evaluator.Set_Variable(change_to, Variant(QStringLiteral("trip")));
    const int rows = 200'000;
    const double seconds = Best_Seconds(repeats, [&] {
        for (int i = 0; i < rows; ++i) {
            (void)evaluator.Set_Variable(date, Variant(Date_Value{38000.0 + i % 1000}));
            (void)evaluator.Set_Variable(serial, Variant(QStringLiteral("0012")));
            if (!evaluator.Value().Is_String()) std::abort();
        }
    });
    std::printf("%-40s %9.2f million a second\n", Rename_Name, rows / seconds / 1e6);
}

constexpr const char* Compile_Name = "compiling";

void Run_Compile(int repeats)
{
    for (const int kilobytes : {128, 256, 512, 1024}) {
        QString text;
        for (int i = 0; text.size() < kilobytes * 1024; ++i)
            text += QStringLiteral("v%1 = v%1 + Len(\"%1\") * 2\n").arg(i);
        System_Host host;
        bkcEvaluate evaluator(host);
        const double seconds = Best_Seconds(repeats, [&] {
            if (!evaluator.Program(text)) std::abort();
        });
        std::printf("%s %4d KB %33.2f ms\n", Compile_Name, kilobytes, seconds * 1e3);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const int repeats = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5;
    const auto is_wanted = [&](const char* name) { return argc < 3 || std::strstr(name, argv[2]) != nullptr; };
    for (const Pair& pair : Pairs)
        if (is_wanted(pair.name)) Run_Pair(pair, repeats);
    if (is_wanted(Rename_Name)) Run_Rename_Formula(repeats);
    if (is_wanted(Compile_Name)) Run_Compile(repeats);
}
