#include "slides/Slide_Show_File.h"

#include <gtest/gtest.h>
#include <random>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

struct Recorder final : Slide_Show_Sink {
    void Take_Folder(const QString& name) override { said += Q("dir=") + name + u';'; }
    void Take_Seconds(float seconds) override { said += Q("tim=") + Seconds_Text(seconds) + u';'; }
    bool Take_Slide(const Slide& slide) override
    {
        said += slide.file + u'|' + QString::number(slide.rotate) + u'|' + Seconds_Text(slide.seconds) + u';';
        slides.push_back(slide);
        return int(slides.size()) < stop_at;
    }
    bool Take_Sound(const QString& file) override
    {
        said += Q("snd=") + file + u';';
        return true;
    }
    QString said;
    std::vector<Slide> slides;
    int stop_at = 1000;
};

QString Reading_Of(const QString& text)
{
    Recorder recorder;
    const Show_End end = Read_Slide_Show(text, recorder);
    return recorder.said + (end == Show_End::Complete ? Q("complete")
                            : end == Show_End::Fault  ? Q("fault")
                                                      : Q("stopped"));
}

struct Show_Case {
    const char* name;
    const char* text;
    const char* expected;
};

class Slide_Show_Form : public testing::TestWithParam<Show_Case> {};

const Show_Case Markup_Cases[] = {
    {"as_written",
     "<?xml version=\"1.0\"?>\r\n<hvSlideShow version='00.01' folder='\\a\\' time='3.50'>\r\n"
     "<Slide file='b.jpg' rotate='90' time='1.25'/>\r\n<Slide file='c.jpg'/>\r\n</hvSlideShow>\r\n",
     "dir=\\a\\;tim=3.50;b.jpg|90|1.25;c.jpg|0|0.00;complete"},
    {"without_a_prolog_and_in_other_case", "<HVSLIDESHOW><slide FILE='b.jpg'/></HVslideShow>", "b.jpg|0|0.00;complete"},
    {"rotate_that_is_no_number_leaves_0", "<hvSlideShow><Slide file='b' rotate='abc'/></hvSlideShow>",
     "b|0|0.00;complete"},
    {"rotate_with_a_sign_leaves_0", "<hvSlideShow><Slide file='b' rotate='-90'/></hvSlideShow>", "b|0|0.00;complete"},
    {"rotate_beyond_a_turn", "<hvSlideShow><Slide file='b' rotate='450'/></hvSlideShow>", "b|90|0.00;complete"},
    {"rotate_beyond_all_numbers", "<hvSlideShow><Slide file='b' rotate='99999999999999'/></hvSlideShow>",
     "b|0|0.00;complete"},
    {"empty_time_leaves_the_default", "<hvSlideShow time='x'><Slide file='b' time=''/></hvSlideShow>",
     "b|0|0.00;complete"},
    {"names_of_attributes_inside_a_file_name",
     "<hvSlideShow folder='\\time=\\' time='3'><Slide file='rotate time.jpg' rotate='90' time='5'/></hvSlideShow>",
     "dir=\\time=\\;tim=3.00;rotate time.jpg|90|5.00;complete"},
    {"quotes_and_entities_in_a_name", "<hvSlideShow><Slide file='it&apos;s &lt;&quot;&amp;.jpg'/></hvSlideShow>",
     "it's <\"&.jpg|0|0.00;complete"},
    {"empty_file_is_skipped", "<hvSlideShow><Slide file='' rotate='90'/><Slide file='b'/></hvSlideShow>",
     "b|0|0.00;complete"},
    {"slide_without_attributes_is_a_fault", "<hvSlideShow><Slide file='a'/><Slide/><Slide file='b'/></hvSlideShow>",
     "a|0|0.00;fault"},
    {"other_tag_is_a_fault", "<hvSlideShow><Slide file='a'/><Picture file='x'/><Slide file='b'/></hvSlideShow>",
     "a|0|0.00;fault"},
    {"other_root_is_a_fault", "<hvAlbum folder='x'><Slide file='a'/></hvAlbum>", "fault"},
    {"prolog_alone_is_a_fault", "<?xml version=\"1.0\"?>\r\n", "fault"},
    {"cut_off_keeps_what_came_before", "<hvSlideShow time='3'><Slide file='a'/><Slide file='b",
     "tim=3.00;a|0|0.00;fault"},
    {"end_missing", "<hvSlideShow><Slide file='a'/>", "a|0|0.00;fault"},
    {"comment_is_a_fault", "<hvSlideShow><Slide file='a'/><!-- x --><Slide file='b'/></hvSlideShow>", "a|0|0.00;fault"},
    {"prolog_behind_a_slide_is_a_fault",
     "<hvSlideShow><Slide file='a'/><?xml version='1.0'?><hvSlideShow><Slide file='b'/></hvSlideShow>",
     "a|0|0.00;fault"},
    {"closing_slide_is_a_fault", "<hvSlideShow><Slide file='a'></Slide></hvSlideShow>", "a|0|0.00;fault"},
};

const Show_Case Keyword_Cases[] = {
    {"time_alone_opens_no_pictures", "TIM,5;", "tim=5.00;complete"},
    {"as_copied", "VER,00.01;\r\nDIR,'C:\\a''s\\';\r\nPIC,'.\\ss001-b.jpg',ROT:90;\r\nTIM,2.00;\r\n",
     "dir=C:\\a's\\;.\\ss001-b.jpg|90|0.00;tim=2.00;complete"},
    {"options_in_any_order", "PIC,'b',TIM:1.5,ROT:180;", "b|180|1.50;complete"},
    {"unknown_option_is_passed", "PIC,'b',XYZ:7,ROT:180;", "b|180|0.00;complete"},
    {"option_that_is_no_number_is_skipped", "PIC,'b',ROT:x,TIM:1.2.3,ROT:90;", "b|90|0.00;complete"},
    {"text_behind_a_record_is_ignored", "PIC,'b';,ROT:90;\nTIM,4;5", "b|0|0.00;tim=4.00;complete"},
    {"double_quotes", "PIC,\"it's \"\"b\"\"\";", "it's \"b\"|0|0.00;complete"},
    {"name_with_comma_colon_and_semicolon", "PIC,'a,b:c;d.jpg',ROT:90;", "a,b:c;d.jpg|90|0.00;complete"},
    {"sound", "SND,'x.wav';", "snd=x.wav;complete"},
    {"blank_lines_and_blanks_around", "\r\n  \r\n\t PIC , 'b' ;\r\n", "b|0|0.00;complete"},
    {"all_line_ends", "PIC,'a';\nPIC,'b';\rPIC,'c';\r\nPIC,'d';", "a|0|0.00;b|0|0.00;c|0|0.00;d|0|0.00;complete"},
    {"unknown_keywords_are_skipped", "ABC,'x';\nno comma\n,\nPIC,'b';", "b|0|0.00;complete"},
    {"name_without_quotes_is_no_slide", "PIC,b.jpg;", "complete"},
    {"time_that_is_no_number", "TIM,x;\nTIM,1.2.3;\nTIM,.;\nTIM,", "complete"},
    {"cut_off_inside_a_name", "PIC,'a';\nPIC,'b.jp", "a|0|0.00;b.jp|0|0.00;complete"},
    {"empty_file", "", "complete"},
    {"rejected_prolog_makes_lines_of_it", "<?xml version='1.0' ?>\n<hvSlideShow><Slide file='a'/></hvSlideShow>",
     "complete"},
};

INSTANTIATE_TEST_SUITE_P(Markup, Slide_Show_Form, testing::ValuesIn(Markup_Cases),
                         [](const auto& row) { return row.param.name; });
INSTANTIATE_TEST_SUITE_P(Keyword, Slide_Show_Form, testing::ValuesIn(Keyword_Cases),
                         [](const auto& row) { return row.param.name; });

TEST_P(Slide_Show_Form, Is_Read)
{
    EXPECT_EQ(Reading_Of(Q(GetParam().text)).toStdString(), GetParam().expected);
}

TEST(Slide_Show_Form, Ends_Where_The_Sink_Says)
{
    for (const char* text :
         {"PIC,'a';\nPIC,'b';\nTIM,9;", "<hvSlideShow><Slide file='a'/><Slide file='b'/></hvSlideShow>"}) {
        Recorder recorder;
        recorder.stop_at = 1;
        EXPECT_EQ(Read_Slide_Show(Q(text), recorder), Show_End::Stopped);
        EXPECT_EQ(recorder.said, Q("a|0|0.00;"));
    }
}

struct Folder_Case {
    const char* name;
    std::vector<Slide> slides;
    const char* folder;
};

class Shared_Folder : public testing::TestWithParam<Folder_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Shared_Folder,
    testing::Values(Folder_Case{"one_slide", {{"/p/a/1.jpg"}}, "/p/a/"},
                    Folder_Case{"cut_back_to_a_whole_folder", {{"/p/abc/1.jpg"}, {"/p/abd/1.jpg"}}, "/p/"},
                    Folder_Case{"one_below_the_other", {{"/p/a/1.jpg"}, {"/p/a/b/1.jpg"}}, "/p/a/"},
                    Folder_Case{"two_drives", {{"C:\\a\\1.jpg"}, {"D:\\a\\1.jpg"}}, ""},
                    Folder_Case{"nothing_but_the_root", {{"/a/1.jpg"}, {"/b/1.jpg"}}, ""},
                    Folder_Case{"no_slides", {}, ""}),
    [](const auto& row) { return row.param.name; });

TEST_P(Shared_Folder, Is_Found)
{
    EXPECT_EQ(Common_Folder(GetParam().slides).toStdString(), GetParam().folder);
}

TEST(Slide_Show_Text, Has_Its_Exact_Form)
{
    const std::vector<Slide> slides{{"/p/a'b/1.jpg", 90, 1.25F}, {"/p/a'b/c/2.jpg", 0, 0}};
    EXPECT_TRUE(Slide_Show_Text(slides, 2).contains(
        Q(" folder='\\p\\a&apos;b\\' time='2.00'>\r\n<Slide file='1.jpg' rotate='90' time='1.25'/>\r\n"
          "<Slide file='c\\2.jpg'/>\r\n</hvSlideShow>\r\n")));
    EXPECT_TRUE(Slide_Show_Text(slides, 2).startsWith(Q("<?xml version=\"1.0\"?>\r\n<hvSlideShow version='")));
}

TEST(Slide_Show_Text, Two_Drives_Give_An_Empty_Folder_And_Full_Names)
{
    const std::vector<Slide> slides{{"C:\\a\\1.jpg"}, {"D:\\a\\2.jpg"}};
    const QString text = Slide_Show_Text(slides, 2);
    EXPECT_TRUE(text.contains(Q("folder=''")));
    EXPECT_TRUE(text.contains(Q("file='C:\\a\\1.jpg'"))) << text.toStdString();
}

TEST(Slide_Show_Text, Reads_Back_As_It_Was)
{
    const unsigned seed = 7;
    std::mt19937 random(seed);
    const QString letters = Q("ab<>&'\"=, ;:\xC3\xA4\xE2\x82\xACtimerotatefolderfile");
    for (int run = 0; run < 300; ++run) {
        std::vector<Slide> slides(random() % 5 + 1);
        for (Slide& slide : slides) {
            slide.file = Q("/p/");
            for (auto left = random() % 12 + 1; left > 0; --left)
                slide.file += letters[qsizetype(random() % unsigned(letters.size()))];
            slide.rotate = int(random() % 4) * 90;
            slide.seconds = float(random() % 4) * 0.25F;
        }
        Recorder recorder;
        ASSERT_EQ(Read_Slide_Show(Slide_Show_Text(slides, 3), recorder), Show_End::Complete);
        ASSERT_EQ(recorder.slides.size(), slides.size());
        for (std::size_t i = 0; i < slides.size(); ++i) {
            ASSERT_EQ(Q("/p/") + recorder.slides[i].file, slides[i].file) << "seed " << seed << ", run " << run;
            ASSERT_EQ(recorder.slides[i].rotate, slides[i].rotate) << slides[i].file.toStdString();
            ASSERT_EQ(recorder.slides[i].seconds, slides[i].seconds) << slides[i].file.toStdString();
        }
    }
}

} // namespace
