#include "dev/samples/Sample_Set.h"

#include <cstdio>
#include <exception>
#include <filesystem>

// hv_make_samples FOLDER: writes the sample pictures, the same bytes each time.
int main(int argument_count, char** arguments)
{
    if (argument_count != 2) {
        std::fputs("usage: hv_make_samples FOLDER\n", stderr);
        return 2;
    }
    try {
        std::filesystem::create_directories(arguments[1]);
        for (const Sample_Set::Maker maker : Sample_Set::All()) maker(arguments[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "hv_make_samples: %s\n", error.what());
        return 1;
    }
    return 0;
}
