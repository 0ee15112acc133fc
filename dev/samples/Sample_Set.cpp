#include "dev/samples/Sample_Set.h"

#include <cstdio>
#include <cstdlib>

namespace {

std::vector<Sample_Set::Maker>& Makers()
{
    static std::vector<Sample_Set::Maker> makers;
    return makers;
}

} // namespace

Sample_Set::Sample_Set(Maker maker)
{
    Makers().push_back(maker);
}

const std::vector<Sample_Set::Maker>& Sample_Set::All()
{
    return Makers();
}

void Write_Sample(const std::string& path, const std::vector<std::uint8_t>& bytes)
{
    std::FILE* file = std::fopen(path.c_str(), "wb");
    const bool written = file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    const bool closed = file != nullptr && std::fclose(file) == 0;
    if (written && closed) return;
    std::perror(path.c_str());
    std::exit(1);
}
