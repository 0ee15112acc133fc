#include "frame/State_Folder.h"

#include <QtCore/QDir>
#include <gtest/gtest.h>

namespace {

class State_Place : public testing::Test {
protected:
    ~State_Place() override { qputenv("XDG_STATE_HOME", before); }
    const QByteArray before = qgetenv("XDG_STATE_HOME");
};

TEST_F(State_Place, Is_Where_The_Environment_Says)
{
    qputenv("XDG_STATE_HOME", "/photos/state");
    EXPECT_EQ("/photos/state/halvine", State_Folder());
}

TEST_F(State_Place, Is_At_Home_When_It_Says_Nothing_Or_Names_No_Whole_Path)
{
    for (const char* value : {"", "state"}) {
        qputenv("XDG_STATE_HOME", value);
        EXPECT_EQ(QDir::homePath() + "/.local/state/halvine", State_Folder());
    }
}

} // namespace
