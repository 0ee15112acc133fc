#include "tests/evaluate/library/Direct_Call.h"

#include <fstream>
#include <gtest/gtest.h>
#include <set>

namespace {

struct Example {
    std::string name, call, result;
};

std::string Trimmed(std::string text)
{
    const auto begin = text.find_first_not_of(" `"), end = text.find_last_not_of(" `");
    return begin == std::string::npos ? "" : text.substr(begin, end - begin + 1);
}

// A row "| `Name(arguments)` | what it does | `example` | `result` |" of the reference for users.
std::vector<Example> Examples_Of_Reference()
{
    std::ifstream file(HALVINE_SOURCE_DIR "/docs/formulas.md");
    std::vector<Example> examples;
    std::string line;
    while (std::getline(file, line)) {
        if (line.rfind("| `", 0) != 0) continue;
        std::vector<std::string> cells;
        std::string::size_type begin = 2, end = 0;
        for (; (end = line.find(" |", begin)) != std::string::npos; begin = end + 2)
            cells.push_back(line.substr(begin, end - begin));
        if (cells.size() != 4) continue;
        const auto call = Trimmed(cells[0]);
        examples.push_back({call.substr(0, call.find('(')), Trimmed(cells[2]), Trimmed(cells[3])});
    }
    return examples;
}

} // namespace

TEST(Formula_Reference, Every_Example_Gives_The_Result_Beside_It)
{
    for (const auto& example : Examples_Of_Reference()) {
        Direct_Call caller;
        const auto behind = example.call.find("; ");
        if (behind != std::string::npos) caller.Shown("let " + example.call.substr(0, behind));
        const auto call = behind == std::string::npos ? example.call : example.call.substr(behind + 2);
        EXPECT_EQ(example.result, caller.Text(call)) << example.call;
    }
}

TEST(Formula_Reference, Every_Built_In_Has_A_Row)
{
    std::set<std::string> named;
    for (auto example : Examples_Of_Reference()) {
        for (auto& c : example.name) c = char(std::toupper(static_cast<unsigned char>(c)));
        named.insert(example.name);
    }
    for (const auto& row : Formula::Built_Ins()) EXPECT_TRUE(named.contains(std::string(row.name))) << row.name;
}
