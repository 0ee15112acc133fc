#include "frame/program/Program_Arguments.h"

#include "frame/text/Path_Utilities.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr const char* Usage = "Usage: halvine [SHOW.hvs]\n"
                              "\n"
                              "Opens Halvine, with the slide show file SHOW.hvs when one is named.\n"
                              "\n"
                              "  -h, --help     show this help\n"
                              "  -v, --version  show the version\n";

bool Is_One_Of(const char* argument, const char* brief, const char* whole)
{
    return std::strcmp(argument, brief) == 0 || std::strcmp(argument, whole) == 0;
}

} // namespace

std::optional<int> Answer_Without_Window(int argc, char** argv)
{
    for (int i = 1; i < argc && std::strcmp(argv[i], "--") != 0; ++i) {
        if (Is_One_Of(argv[i], "-h", "--help")) return std::fputs(Usage, stdout) < 0 ? 1 : 0;
        if (Is_One_Of(argv[i], "-v", "--version")) return std::puts("halvine " HALVINE_VERSION) < 0 ? 1 : 0;
    }
    return {};
}

std::optional<Program_Arguments> Read_Arguments(int argc, char** argv)
{
    Program_Arguments arguments;
    bool options = true;
    int files = 0;
    for (int i = 1; i < argc; ++i) {
        if (options && std::strcmp(argv[i], "--") == 0) {
            options = false;
            continue;
        }
        if ((options && argv[i][0] == '-' && argv[i][1] != 0) || ++files > 1) {
            std::fprintf(stderr, "halvine: %s: %s (see halvine --help)\n", argv[i],
                         files > 1 ? "one slide show at most" : "no such option");
            return {};
        }
        arguments.show = Path_From_Bytes(argv[i]);
    }
    return arguments;
}
