#include "frame/program/Program_Arguments.h"

#include "frame/text/Path_Utilities.h"

#include <gtest/gtest.h>

namespace {

/// The arguments of main, the program's name in front.
class Arguments {
public:
    explicit Arguments(std::vector<std::string> words) : words_(std::move(words))
    {
        words_.insert(words_.begin(), "halvine");
        for (std::string& word : words_) pointers_.push_back(word.data());
    }
    std::optional<int> Answer() { return Answer_Without_Window(int(pointers_.size()), pointers_.data()); }
    std::optional<Program_Arguments> Read() { return Read_Arguments(int(pointers_.size()), pointers_.data()); }

private:
    std::vector<std::string> words_;
    std::vector<char*> pointers_;
};

struct Show_Case {
    const char* name;
    std::vector<std::string> words;
    const char* show; // null: wrong usage
};

class Shows : public testing::TestWithParam<Show_Case> {};

INSTANTIATE_TEST_SUITE_P(All, Shows,
                         testing::Values(Show_Case{"nothing", {}, ""}, Show_Case{"a_show", {"/a/b.hvs"}, "/a/b.hvs"},
                                         Show_Case{"a_name_with_blanks", {"my show.hvs"}, "my show.hvs"},
                                         Show_Case{"a_name_that_is_no_valid_text", {"/\xFF.hvs"}, "/\xFF.hvs"},
                                         Show_Case{"a_name_like_an_option", {"--", "-x.hvs"}, "-x.hvs"},
                                         Show_Case{"a_lone_dash_is_a_name", {"-"}, "-"},
                                         Show_Case{"an_unknown_option", {"--fast"}, nullptr},
                                         Show_Case{"an_unknown_short_option", {"-x"}, nullptr},
                                         Show_Case{"two_shows", {"a.hvs", "b.hvs"}, nullptr},
                                         Show_Case{"two_shows_behind_dashes", {"--", "a.hvs", "b.hvs"}, nullptr}),
                         [](const auto& row) { return row.param.name; });

TEST_P(Shows, Are_Read)
{
    testing::internal::CaptureStderr();
    const auto arguments = Arguments(GetParam().words).Read();
    const std::string said = testing::internal::GetCapturedStderr();
    ASSERT_EQ(GetParam().show != nullptr, arguments.has_value());
    if (arguments)
        EXPECT_EQ(GetParam().show, File_System_Bytes(arguments->show));
    else
        EXPECT_NE(std::string::npos, said.find("halvine --help")) << said;
}

TEST(Answers, Help_And_Version_Need_No_Window)
{
    for (const char* word : {"-h", "--help"}) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(0, Arguments({word}).Answer());
        EXPECT_EQ(0U, testing::internal::GetCapturedStdout().find("Usage: halvine [SHOW.hvs]"));
    }
    for (const char* word : {"-v", "--version"}) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(0, Arguments({"x.hvs", word}).Answer());
        EXPECT_EQ("halvine " HALVINE_VERSION "\n", testing::internal::GetCapturedStdout());
    }
    EXPECT_FALSE(Arguments({"x.hvs"}).Answer().has_value());
    EXPECT_FALSE(Arguments({"--", "--help"}).Answer().has_value()) << "a file of that name";
}

} // namespace
