#include "catalogue/Journal_Text.h"
#include "frame/text/Path_Utilities.h"

#include <QtCore/QStringList>
#include <gtest/gtest.h>
#include <random>

namespace {

Kept_Picture Full_Picture(int key)
{
    return {.key = key,
            .file = QStringLiteral("/home/anna/Bilder/Stra\u00dfe %1.jpg").arg(key),
            .rotate = 270,
            .flip = 2,
            .seconds = 2.5F,
            .script = QStringLiteral("Crop(1,2,3,4);Text(\"a\nb\")"),
            .description = QStringLiteral("sea, \u201cblue\u201d"),
            .inode = 0xFFFF'FFFF'FFFF'FFF0U,
            .size = 123'456'789'012,
            .modified_nanoseconds = 1'700'000'000'123'456'789};
}

QByteArray Sample(int pictures)
{
    QByteArray text = Journal_Head();
    for (int key = 1; key <= pictures; ++key) text += Journal_Line(Full_Picture(key));
    text += Journal_Line({.key = 2, .file = "/b.jpg"});
    text += Journal_Line_Of_Dropped(1);
    return text;
}

TEST(Journal_Text, Reads_What_It_Wrote)
{
    const Kept_Work work = Read_Journal_Text(Journal_Head() + Journal_Line(Full_Picture(3)));
    EXPECT_FALSE(work.is_damaged);
    ASSERT_EQ(1U, work.pictures.size());
    EXPECT_EQ(Full_Picture(3), work.pictures[0]);
}

TEST(Journal_Text, The_Last_Word_About_A_Picture_Counts)
{
    const Kept_Work work = Read_Journal_Text(Sample(3));
    ASSERT_EQ(2U, work.pictures.size());
    EXPECT_EQ("/b.jpg", work.pictures[0].file);
    EXPECT_FALSE(work.pictures[0].Has_Changes());
    EXPECT_EQ(3, work.pictures[1].key);
}

TEST(Journal_Text, A_Path_That_Is_No_Text_Comes_Back_Byte_For_Byte)
{
    const Kept_Picture picture{.key = 1, .file = Path_From_Bytes("/a%2Fb \\ \x80\xFF.jpg")};
    const Kept_Work work = Read_Journal_Text(Journal_Head() + Journal_Line(picture));
    ASSERT_EQ(1U, work.pictures.size());
    EXPECT_EQ("/a%2Fb \\ \x80\xFF.jpg", File_System_Bytes(work.pictures[0].file));
}

struct Bad_Line {
    std::string name;
    std::string json;
};
class Bad_Journal_Line : public testing::TestWithParam<Bad_Line> {};

TEST_P(Bad_Journal_Line, Ends_The_Reading)
{
    QByteArray text = Journal_Head() + Journal_Line({.key = 1, .file = "/a.jpg"});
    const QByteArray line = QByteArray::fromStdString(GetParam().json);
    text += line + '\n' + Journal_Line({.key = 2, .file = "/b.jpg"});
    const Kept_Work work = Read_Journal_Text(text);
    EXPECT_TRUE(work.is_damaged);
    EXPECT_EQ(1U, work.pictures.size());
}

INSTANTIATE_TEST_SUITE_P(All, Bad_Journal_Line,
                         testing::Values(Bad_Line{"empty", ""}, Bad_Line{"short", "1234"},
                                         Bad_Line{"no_sum", "{\"key\":3}"},
                                         Bad_Line{"wrong_sum", "00000000 {\"key\":3,\"file\":\"/c.jpg\"}"},
                                         // echo -n '{"key":3}' | sha1sum, and the like
                                         Bad_Line{"no_file", "a36f409a {\"key\":3}"},
                                         Bad_Line{"no_json", "aaf4c61d hello"}),
                         [](const auto& row) { return row.param.name; });

TEST(Journal_Text, Another_File_Holds_Nothing)
{
    for (const char* text : {"", "hvJournal 2\n", "\xFF\xD8\xFF", "hvJournal"})
        EXPECT_TRUE(Read_Journal_Text(text).pictures.empty());
}

/// What a reader may answer: the state after each whole line.
QStringList Prefix_States(const QByteArray& text)
{
    const auto told = [](const Kept_Work& work) {
        QString all;
        for (const Kept_Picture& picture : work.pictures) all += QString::fromUtf8(Journal_Line(picture));
        return all;
    };
    QStringList states{told({})};
    for (qsizetype end = text.indexOf('\n'); end >= 0; end = text.indexOf('\n', end + 1))
        states << told(Read_Journal_Text(text.left(end + 1)));
    return states;
}

TEST(Journal_Text, Cut_Anywhere_It_Gives_What_Stands_Before_The_Cut)
{
    const QByteArray text = Sample(4);
    const QStringList states = Prefix_States(text);
    for (qsizetype size = 0; size < text.size(); ++size) {
        const QByteArray cut = text.left(size);
        const QStringList seen = Prefix_States(cut);
        EXPECT_TRUE(states.contains(seen.back())) << size;
        const Kept_Work work = Read_Journal_Text(cut);
        const bool whole_line = size >= Journal_Head().size() && cut.endsWith('\n');
        EXPECT_EQ(!whole_line, work.is_damaged) << size;
    }
}

TEST(Journal_Text, Damaged_Anywhere_It_Gives_What_Stands_Before_The_Fault)
{
    const QByteArray text = Sample(4);
    const QStringList states = Prefix_States(text);
    const unsigned seed = 20260314;
    std::mt19937 random(seed);
    for (int round = 0; round < 20'000; ++round) {
        QByteArray damaged = text;
        for (unsigned hits = 1 + random() % 3; hits > 0; --hits)
            damaged[qsizetype(random() % unsigned(damaged.size()))] = char(random());
        if (damaged == text) continue;
        QString all;
        for (const Kept_Picture& picture : Read_Journal_Text(damaged).pictures)
            all += QString::fromUtf8(Journal_Line(picture));
        ASSERT_TRUE(states.contains(all)) << "seed " << seed << " round " << round;
    }
}

} // namespace
