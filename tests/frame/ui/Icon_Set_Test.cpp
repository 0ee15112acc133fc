#include "frame/ui/Icon_Set.h"

#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <gtest/gtest.h>

namespace {

constexpr const char* Panel_And_View_Icons[] = {
    "IDI_HALVINE_PICK",
    "IDI_HALVINE_PICK_STOP",
    "IDI_HALVINE_PICK_APPEND",
    "IDI_HALVINE_DISCARD",
    "IDI_HALVINE_SEARCH_FILES",
    "IDI_HALVINE_SEARCH_DESCRIPTIONS",
    "IDI_HALVINE_NEW_FOLDER",
    "IDI_HALVINE_COPY_RENAME",
    "IDI_HALVINE_COPY",
    "IDI_HALVINE_MOVE",
    "IDI_HALVINE_DELETE",
    "IDI_HALVINE_RENAME",
    "IDI_HALVINE_DESCRIBE",
    "IDI_HALVINE_ROTATE_90CW",
    "IDI_HALVINE_ROTATE_90CCW",
    "IDI_HALVINE_ZOOM_VIEW",
    "IDI_HALVINE_HISTOGRAM",
    "IDI_HALVINE_SLIDESHOW",
    "IDI_HALVINE_PRINT",
    "IDI_SLIDE_SHOW_STOP",
    "IDI_SLIDE_CONTROL_PLAY",
    "IDI_SLIDE_CONTROL_PAUSE",
    "IDI_SLIDE_CONTROL_STOP",
    "IDI_SLIDE_CONTROL_PREVIOUS",
    "IDI_SLIDE_CONTROL_NEXT",
    "IDI_SLIDE_CONTROL_SELECT",
    "IDI_SLIDE_CONTROL_SELECTED",
    "IDI_ZOOM_IN",
    "IDI_ZOOM_OUT",
    "IDI_EXPLORER_BACK",
    "IDI_EXPLORER_UP",
    "IDI_FOLDER",
    "IDI_FOLDER_OPEN",
    "IDI_HELP",
    "IDI_HOME",
    "IDI_HALVINE",
};

int Drawn_Pixels(const QImage& image)
{
    int drawn = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) drawn += image.pixelColor(x, y).alpha() > 0;
    return drawn;
}

TEST(Icon_Set, Has_Every_Icon_Of_The_Panel_And_The_Views)
{
    for (const char* id : Panel_And_View_Icons) EXPECT_TRUE(Icon_Ids().contains(QLatin1String(id))) << id;
}

TEST(Icon_Set, Every_Icon_Draws_Something_At_Every_Size)
{
    for (const QString& id : Icon_Ids())
        for (const int size : {16, 24, 40, 80}) {
            const QImage image = Icon(id).pixmap(QSize(size, size)).toImage();
            EXPECT_GT(Drawn_Pixels(image), size * size / 20) << id.toStdString() << " at " << size;
        }
}

TEST(Icon_Set, An_Unknown_Id_Is_No_Icon)
{
    EXPECT_TRUE(Icon("IDI_NOTHING").isNull());
    EXPECT_TRUE(Icon_Drawing("IDI_NOTHING", Qt::black, true).isEmpty());
}

TEST(Icon_Set, A_Folder_Is_Drawn_Open_Where_It_Is_On)
{
    const QSize size(24, 24);
    const auto drawn = [&](const QIcon& icon, QIcon::State state) {
        return icon.pixmap(size, QIcon::Normal, state).toImage();
    };
    EXPECT_EQ(drawn(Icon("IDI_FOLDER"), QIcon::Off), drawn(Folder_Icon(), QIcon::Off));
    EXPECT_EQ(drawn(Icon("IDI_FOLDER_OPEN"), QIcon::Off), drawn(Folder_Icon(), QIcon::On));
}

TEST(Icon_Set, Accents_Follow_The_Text)
{
    const QByteArray on_light = Icon_Drawing("IDI_HALVINE_PICK", QColor("#101010"), true);
    const QByteArray on_dark = Icon_Drawing("IDI_HALVINE_PICK", QColor("#eeeeee"), true);
    EXPECT_TRUE(on_light.contains("#101010") && on_light.contains("#1f6fd6"));
    EXPECT_TRUE(on_dark.contains("#eeeeee") && on_dark.contains("#6db3ff"));
    EXPECT_FALSE(on_dark.contains("currentColor"));
}

TEST(Icon_Set, A_Disabled_Icon_Has_One_Tone)
{
    const QByteArray drawing = Icon_Drawing("IDI_HALVINE_PICK_STOP", QColor("#999999"), false);
    EXPECT_FALSE(drawing.contains("#d13a2f"));
}

TEST(Icon_Set, Uses_Nothing_But_The_Tones_Of_The_Convention)
{
    for (const QString& id : Icon_Ids()) {
        if (id == "IDI_HALVINE") continue;
        QByteArray drawing = Icon_Drawing(id, QColor("#999999"), false);
        drawing.replace("#999999", "");
        EXPECT_FALSE(drawing.contains('#')) << id.toStdString();
    }
}

} // namespace
