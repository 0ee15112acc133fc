#include "frame/Recent_List.h"

#include "frame/Settings_Store.h"
#include "frame/ports/Scripted_Platform.h"

#include <gtest/gtest.h>

namespace {

TEST(Recent_List, The_Newest_Comes_First_And_Each_Once)
{
    Settings_In_Memory settings;
    Recent_List list(settings, "Recent-Show");
    for (const char* path : {"/a", "/b", "/a", ""}) list.Add(path);
    EXPECT_EQ(list.Paths(), (QStringList{"/a", "/b"}));
}

TEST(Recent_List, Is_There_Again_In_The_Next_Run)
{
    Settings_In_Memory settings;
    for (const char* path : {"/with \"quotes\" and, commas", "/\xC3\xA4\n;[x]=y"}) Recent_List(settings, "R").Add(path);
    EXPECT_EQ(Recent_List(settings, "R").Paths(), (QStringList{"/\xC3\xA4\n;[x]=y", "/with \"quotes\" and, commas"}));
    EXPECT_TRUE(Recent_List(settings, "Other").Paths().isEmpty());
}

TEST(Recent_List, Is_Bounded)
{
    Settings_In_Memory settings;
    Recent_List list(settings, "R");
    for (int i = 1; i <= 20; ++i) list.Add("/" + QString::number(i));
    EXPECT_EQ(list.Paths().size(), Recent_List::Most_Paths);
    EXPECT_EQ(list.Paths().front(), "/20");
    EXPECT_EQ(settings.Value_Names(Settings_Key).size(), Recent_List::Most_Paths);
    list.Add(QString(10000, 'x'));
    EXPECT_EQ(list.Paths().front(), "/20");
}

TEST(Recent_List, Damaged_Values_And_Refused_Writes_Cost_Nothing_Else)
{
    Settings_In_Memory settings;
    settings.user[Settings_Key] = {{"R-1", "/a"}, {"R-2", "/a"}, {"R-3", QString(10000, 'x')}, {"R-6", "/b"}};
    settings.refuse_writes = true;
    Recent_List list(settings, "R");
    EXPECT_EQ(list.Paths(), (QStringList{"/a", "/b"}));
    list.Add("/c");
    EXPECT_EQ(list.Paths(), (QStringList{"/c", "/a", "/b"}));
}

} // namespace
