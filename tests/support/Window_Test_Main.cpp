#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

/// Window tests have an application object, no display, and settings of their own.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
