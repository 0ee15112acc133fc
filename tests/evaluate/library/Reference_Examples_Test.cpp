#include "Project_Folders.h"
#include "tests/evaluate/library/Direct_Call.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>

namespace {

struct Example {
    std::string name, arguments, call, result;
};

std::string Trimmed(std::string text)
{
    const auto begin = text.find_first_not_of(" `"), end = text.find_last_not_of(" `");
    return begin == std::string::npos ? "" : text.substr(begin, end - begin + 1);
}

// The cells of the table rows of the reference for users.
std::vector<std::vector<std::string>> Rows_Of_Reference()
{
    std::ifstream file(HALVINE_SOURCE_DIR "/docs/formulas.md");
    std::vector<std::vector<std::string>> rows;
    std::string line;
    while (std::getline(file, line)) {
        if (line.rfind("| ", 0) != 0) continue;
        auto& cells = rows.emplace_back();
        std::string::size_type begin = 1, end = 0;
        for (; (end = line.find(" |", begin)) != std::string::npos; begin = end + 2)
            cells.push_back(line.substr(begin, end - begin));
    }
    return rows;
}

// A row "| `Name(arguments)` | what it does | `example` | `result` |".
std::vector<Example> Examples_Of_Reference()
{
    std::vector<Example> examples;
    for (const auto& cells : Rows_Of_Reference()) {
        if (cells.size() != 4 || cells[0].rfind(" `", 0) != 0) continue;
        const auto call = Trimmed(cells[0]);
        const auto open = std::min(call.find('('), call.size());
        examples.push_back({call.substr(0, open), call.substr(open), Trimmed(cells[2]), Trimmed(cells[3])});
    }
    return examples;
}

// The fewest and the most arguments of "(a, b [, c [, d]])"; what stands in brackets may be left out.
std::pair<int, int> Argument_Counts(const std::string& arguments)
{
    int depth = 0, fewest = 0, most = 0;
    bool in_name = false;
    for (const char c : arguments) {
        depth += (c == '[') - (c == ']');
        const bool is_name = std::isalnum(static_cast<unsigned char>(c)) || (in_name && c == ' ');
        if (is_name && !in_name) ++(depth == 0 ? fewest : most);
        in_name = is_name;
    }
    return {fewest, fewest + most};
}

std::string In_Capitals(std::string text)
{
    for (auto& c : text) c = char(std::toupper(static_cast<unsigned char>(c)));
    return text;
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
    std::map<std::string, std::string> named;
    for (const auto& example : Examples_Of_Reference()) named[In_Capitals(example.name)] = example.arguments;
    for (const auto& row : Formula::Built_Ins()) {
        const auto found = named.find(std::string(row.name));
        ASSERT_NE(found, named.end()) << row.name;
        EXPECT_EQ(std::pair(int(row.minimum), int(row.maximum)), Argument_Counts(found->second)) << row.name;
    }
}

TEST(Formula_Reference, Every_Named_Constant_Stands_There_With_Its_Number)
{
    std::map<std::string, std::string> numbers;
    const std::regex constant("`(vb[A-Za-z0-9]+)` ([0-9]+)");
    for (const auto& cells : Rows_Of_Reference())
        for (std::sregex_iterator it(cells[0].begin(), cells[0].end(), constant), end; it != end; ++it)
            numbers[In_Capitals((*it)[1])] = (*it)[2];
    for (const auto& row : Formula::Whole_Number_Constants())
        EXPECT_EQ(std::to_string(row.value), numbers[std::string(row.name)]) << row.name;
    EXPECT_EQ(numbers.size(), Formula::Whole_Number_Constants().size());
}

TEST(Formula_Reference, Every_Error_Stands_There_With_Its_Text)
{
    std::map<std::string, std::string> texts;
    for (const auto& cells : Rows_Of_Reference())
        if (cells.size() >= 2 && std::isdigit(static_cast<unsigned char>(cells[0][1])))
            texts[Trimmed(cells[0])] = Trimmed(cells[1]);
    for (const auto& [number, text] : std::span(Formula::Error_Text_Table).subspan(1)) // the first is no error
        EXPECT_EQ(text, texts[std::to_string(int(number))]) << int(number);
    EXPECT_EQ(texts.size() + 1, std::size(Formula::Error_Text_Table));
}
