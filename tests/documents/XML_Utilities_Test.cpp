#include "documents/Brennick_XML_Utilities.h"

#include <gtest/gtest.h>
#include <random>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

/// All tags of a text: "name|attributes|text" with "!" before a self-closing one, then "@" and the final position.
QString Tags_Of(const QString& source)
{
    QString all;
    int position = 1;
    for (;;) {
        const XML_Tag tag = XML_Next_Tag(source, position, Behind_Text(source));
        if (tag.Name.isEmpty()) return all + u'@' + QString::number(position);
        all += (tag.Self_Closing ? Q("!") : QString()) + tag.Name + u'|' + tag.Attributes + u'|' + tag.Text + u';';
    }
}

struct Tag_Case {
    const char* name;
    const char* source;
    const char* expected;
};

class Next_Tag : public testing::TestWithParam<Tag_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Next_Tag,
    testing::Values(
        Tag_Case{"self_closing_with_an_attribute", "<a b='1'/>", "!a|b='1'|;@11"},
        Tag_Case{"closing_tag_has_the_decoded_text", "<a>x &amp; y</a>", "a||;/a||x & y;@17"},
        Tag_Case{"text_before_the_first_tag_is_ignored", "hello <a>", "a||;@10"},
        Tag_Case{"numeric_reference_stays", "<a>&#65;</a>", "a||;/a||&#65;;@13"},
        Tag_Case{"text_keeps_its_blanks", "<a> x\r\n</a>", "a||;/a|| x\r\n;@12"},
        Tag_Case{"closing_tag_without_text", "<a></a>", "a||;/a||;@8"},
        Tag_Case{"only_the_text_since_the_previous_tag", "<a>one<b/>two</a>", "a||;!b||;/a||two;@18"},
        Tag_Case{"attributes_on_several_lines", "<a\r\n  b='1'\r\n  c='2' >", "a|b='1'\r\n  c='2'|;@23"},
        Tag_Case{"self_closing_without_attributes", "<a/>", "!a||;@5"},
        Tag_Case{"self_closing_with_a_blank_before_the_slash", "<a b='1' />", "!a|b='1'|;@12"},
        Tag_Case{"name_with_every_kind_of_character", "<_A1.b-c_>", "_A1.b-c_||;@11"},
        Tag_Case{"name_ends_at_the_first_other_character", "<ab:c d>", "ab|:c d|;@9"},
        Tag_Case{"greater_than_inside_quotes_ends_the_tag", "<a b='x>y'/>", "a|b='x|;@9"},
        Tag_Case{"empty_text", "", "@1"}, Tag_Case{"blanks_only", "  \r\n ", "@1"},
        Tag_Case{"no_tag_at_all", "just words", "@1"}, Tag_Case{"tag_that_is_cut_off", "<a><b c='1'", "a||;@4"},
        Tag_Case{"less_than_at_the_end", "<a><", "a||;@4"}, Tag_Case{"two_characters_are_too_few", "<>", "@1"},
        Tag_Case{"comment_ends_the_reading", "<a><!-- x --><b>", "a||;@4"},
        Tag_Case{"instruction_ends_the_reading", "<?php x ?><a>", "@1"},
        Tag_Case{"document_type_ends_the_reading", "<!DOCTYPE a><a>", "@1"},
        Tag_Case{"name_that_begins_with_a_digit", "<1a>", "@1"},
        Tag_Case{"name_that_begins_with_a_point", "<.a>", "@1"}, Tag_Case{"name_behind_a_blank", "< a>", "@1"},
        Tag_Case{"closing_tag_without_a_name", "<a></>", "a||;@4"},
        Tag_Case{"letters_beyond_ascii_begin_no_name", "<\xC3\xA4>", "@1"},
        Tag_Case{"text_beyond_ascii", "<a>\xC3\xA4\xE2\x82\xAC</a>", "a||;/a||\xC3\xA4\xE2\x82\xAC;@10"},
        Tag_Case{"nesting_is_not_looked_at", "</b><a></c>", "/b||;a||;/c||;@12"}),
    [](const auto& row) { return row.param.name; });

TEST_P(Next_Tag, Gives_Tag_After_Tag)
{
    EXPECT_EQ(Tags_Of(Q(GetParam().source)).toStdString(), GetParam().expected);
}

TEST(XML_Next_Tag, Reads_Nothing_At_Or_Behind_Last)
{
    const QString source = Q("<a/><b/>");
    int position = 1;
    EXPECT_EQ(XML_Next_Tag(source, position, 5).Name, Q("a"));
    EXPECT_TRUE(XML_Next_Tag(source, position, 5).Name.isEmpty());
    EXPECT_TRUE(XML_Next_Tag(source, position, 8).Name.isEmpty()) << "the last > stands at 8";
    EXPECT_EQ(XML_Next_Tag(source, position, 9).Name, Q("b"));
    EXPECT_TRUE(XML_Next_Tag(source, position, 1000).Name.isEmpty());
    position = -5;
    EXPECT_EQ(XML_Next_Tag(source, position, 1000).Name, Q("a"));
}

TEST(XML_Next_Tag, Half_A_Million_Nested_Tags_Need_No_Stack)
{
    const QString source = Q("<a>").repeated(500'000);
    int position = 1, count = 0;
    while (!XML_Next_Tag(source, position, Behind_Text(source)).Name.isEmpty()) ++count;
    EXPECT_EQ(count, 500'000);
}

struct Prolog_Case {
    const char* name;
    const char* source;
    const char* expected;
    int position;
};

class Read_Prolog : public testing::TestWithParam<Prolog_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Read_Prolog,
    testing::Values(Prolog_Case{"as_written", "<?xml version=\"1.0\"?><a>", "<?xml version=\"1.0\"?>", 22},
                    Prolog_Case{"single_quotes_and_more_blanks", "<?xml \t version='1.0'?>", "<?xml \t version='1.0'?>",
                                24},
                    Prolog_Case{"in_capitals", "<?XML version='1.0'?>", "<?XML version='1.0'?>", 22},
                    Prolog_Case{"behind_other_text", "xx<?xml version='1'?>", "<?xml version='1'?>", 22},
                    Prolog_Case{"blank_before_the_end_is_rejected", "<?xml version='1.0' ?>", "", 1},
                    Prolog_Case{"rejected_behind_text_moves_to_it", "xx<?xml version='1.0' ?>", "", 3},
                    Prolog_Case{"encoding_is_rejected", "<?xml version='1.0' encoding='UTF-8'?>", "", 1},
                    Prolog_Case{"letters_in_the_version", "<?xml version='1a'?>", "", 1},
                    Prolog_Case{"other_delimiter_at_the_end", "<?xml version='1.0\"?>", "", 1},
                    Prolog_Case{"no_delimiter", "<?xml version=1.0?>", "", 1},
                    Prolog_Case{"no_version", "<?xml?>", "", 1}, Prolog_Case{"cut_off", "<?xml version='1.0'?", "", 1},
                    Prolog_Case{"missing", "<a>", "", 1}, Prolog_Case{"empty_text", "", "", 1}),
    [](const auto& row) { return row.param.name; });

TEST_P(Read_Prolog, Gives_Its_Text_And_Moves)
{
    const QString source = Q(GetParam().source);
    int position = 1;
    EXPECT_EQ(XML_Read_Prolog(source, position, Behind_Text(source)).toStdString(), GetParam().expected);
    EXPECT_EQ(position, GetParam().position);
}

struct Attribute_Case {
    const char* name;
    const char* attributes;
    const char* wanted;
    const char* expected;
};

class Attribute : public testing::TestWithParam<Attribute_Case> {};

INSTANTIATE_TEST_SUITE_P(All, Attribute,
                         testing::Values(Attribute_Case{"single_quotes", "a='1' b='2'", "b", "2"},
                                         Attribute_Case{"double_quotes", "a=\"1\"", "a", "1"},
                                         Attribute_Case{"blanks_around_the_sign", "a \r\n=\t 'x'", "a", "x"},
                                         Attribute_Case{"other_case", "Folder='x'", "fOLDER", "x"},
                                         Attribute_Case{"decoded", "a='&lt;&apos;&quot;&amp;&gt;'", "a", "<'\"&>"},
                                         Attribute_Case{"other_quote_inside", "a='say \"x\"'", "a", "say \"x\""},
                                         Attribute_Case{"empty_value", "a=''", "a", ""},
                                         Attribute_Case{"missing", "a='1'", "z", ""},
                                         Attribute_Case{"longer_name_with_the_same_end", "mytop='1'", "top", "1"},
                                         Attribute_Case{"only_the_first_place_counts", "x='top' top='1'", "top", ""},
                                         Attribute_Case{"no_sign", "a '1'", "a", ""},
                                         Attribute_Case{"no_quotes", "a=1", "a", ""},
                                         Attribute_Case{"no_closing_quote", "a='1", "a", ""},
                                         Attribute_Case{"nothing_behind_the_sign", "a=", "a", ""},
                                         Attribute_Case{"no_name", "a='1'", "", ""}),
                         [](const auto& row) { return row.param.name; });

TEST_P(Attribute, Has_The_Value)
{
    EXPECT_EQ(XML_Attribute(Q(GetParam().attributes), Q(GetParam().wanted)).toStdString(), GetParam().expected);
}

TEST(XML_Encode, Knows_Five_Characters)
{
    EXPECT_EQ(XML_Encode(Q("a<b>&c'd\"e\xC3\xA4")), Q("a&lt;b&gt;&amp;c&apos;d&quot;e\xC3\xA4"));
    EXPECT_EQ(XML_Decode(Q("&amp;lt; &LT; & &; &amp")), Q("&lt; &LT; & &; &amp"));
    EXPECT_EQ(XML_Decode(Q("&amp;&lt;&gt;&apos;&quot;")), Q("&<>'\""));
}

TEST(XML_Encode, Decodes_To_What_It_Was)
{
    const unsigned seed = 20260314;
    std::mt19937 random(seed);
    const QString letters = Q("&<>'\"amplt;gquos \xC3\xA4#65");
    for (int run = 0; run < 2000; ++run) {
        QString text;
        for (auto left = random() % 12; left > 0; --left)
            text += letters[qsizetype(random() % unsigned(letters.size()))];
        ASSERT_EQ(XML_Decode(XML_Encode(text)), text) << "seed " << seed << ", run " << run;
    }
}

TEST(XML_Tag_Text, Writes_What_The_Reader_Reads)
{
    EXPECT_EQ(XML_Tag_Text({}, false), QString());
    EXPECT_EQ(XML_Tag_Text({.Name = Q("a")}, false), Q("<a/>"));
    EXPECT_EQ(XML_Tag_Text({.Name = Q("a"), .Attributes = Q("b='1'")}, true), Q("<a b='1'/>"));
    EXPECT_EQ(XML_Tag_Text({.Name = Q("a"), .Text = Q("x<y")}, false), Q("<a>x&lt;y</a>"));
    EXPECT_EQ(XML_Tag_Text({.Name = Q("a"), .Attributes = Q("b='1'"), .Text = Q("<c/>")}, true),
              Q("<a b='1'>\r\n<c/>\r\n</a>"));
    const QString attribute = XML_Attribute_Text(Q("file"), Q("it's <5>.jpg"));
    EXPECT_EQ(attribute, Q(" file='it&apos;s &lt;5&gt;.jpg'"));
    EXPECT_EQ(XML_Attribute(attribute, Q("file")), Q("it's <5>.jpg"));
}

TEST(XML_Base_Name, Takes_The_Slash_Away)
{
    EXPECT_EQ(XML_Base_Name(Q(" /Slide ")), Q("Slide"));
    EXPECT_EQ(XML_Base_Name(Q("Slide")), Q("Slide"));
    EXPECT_EQ(XML_Base_Name(QString()), QString());
}

} // namespace
