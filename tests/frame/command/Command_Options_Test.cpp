// What each option of hv does, and every line that it prints.

#include "Project_Folders.h"
#include "tests/frame/command/Hv_Fixture.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QThread>
#include <csignal>
#include <unistd.h>

namespace {

class Hv_Options : public Hv {
protected:
    void Put(const char* name, const QByteArray& bytes)
    {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    /// A picture with a camera's data.
    QString Make_Photo()
    {
        QProcess maker;
        maker.start(Q(HALVINE_BINARY_DIR "/bin/hv_make_samples"), {Path("samples")});
        EXPECT_TRUE(maker.waitForFinished(60'000));
        EXPECT_TRUE(QFile::rename(Path("samples/meadow.jpg"), Path("meadow.jpg")));
        return Q("meadow.jpg");
    }
    static QJsonObject Object(const Answer& answer) { return QJsonDocument::fromJson(answer.out.toUtf8()).object(); }
    QStringList Files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
    File_Dimensions Facts(const char* name)
    {
        File_Dimensions facts;
        EXPECT_TRUE(Get_Dimensions(Path(name), 0, facts)) << name;
        return facts;
    }
};

// ---- info, camera ----

TEST_F(Hv_Options, Info_Is_A_Paragraph_A_File)
{
    Make("a.jpg", "Crop(1,2,3,4)", "Grüße\nan alle");
    const Owned_Bitmap grey(Drawn_Bitmap(
        8, 6, [](int, int) { return 7; }, 1));
    EXPECT_TRUE(Save_Bitmap(grey.Get(), Path("b.tif"), 2, {.comment = {}, .script = {}, .parent = {}}));
    for (const char* name : {"a.jpg", "b.tif"}) {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.resize(1024 * 3 - 500)); // nearer to 3 KB than to 2
        file.setFileTime(QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26), Qt::UTC), QFileDevice::FileModificationTime);
    }
    EXPECT_EQ(Run("info a.jpg b.tif").out.toStdString(), "a.jpg\n"
                                                         "  JPEG, 64 x 48 pixels, 24 bits, 300 x 200 dpi\n"
                                                         "  2026-03-14T15:09:26Z, 3 KB\n"
                                                         "  Description: Grüße an alle\n"
                                                         "  Script: Crop(1,2,3,4)\n"
                                                         "\n"
                                                         "b.tif\n"
                                                         "  TIFF, 8 x 6 pixels, 8 bits\n"
                                                         "  2026-03-14T15:09:26Z, 3 KB\n");
    const QJsonObject facts = Object(Run("info --json b.tif"));
    EXPECT_EQ(facts[Q("size_kb")].toInt(), 3);
    EXPECT_EQ(facts[Q("horizontal_dpi")].toInt(), -1);
    EXPECT_EQ(facts[Q("date")].toString(), Q("2026-03-14T15:09:26Z"));
}

TEST_F(Hv_Options, Camera_Is_A_Line_A_Fact)
{
    Make_Photo();
    const QStringList lines{Q("Make: Sample Works"),
                            Q("Model: Field Camera 2"),
                            Q("Date/Time Taken: 2024:05:17 14:32:08"),
                            Q("Date/Time Digitized: 2024:05:17 14:32:08"),
                            Q("Resolution (w x h): 1200 x 800"),
                            Q("Exposure Program: Aperture Priority"),
                            Q("ISO Speed Rating: 200"),
                            Q("Metering Mode: Multi-segment"),
                            Q("Shutter Speed: 0.004s (1/250)"),
                            Q("Aperture: f/5.6"),
                            Q("EXIF version: 230")};
    EXPECT_EQ(Run("camera meadow.jpg").out, lines.join(u'\n') + u'\n');
    const QJsonObject facts = Object(Run("camera --json meadow.jpg"));
    EXPECT_EQ(facts[Q("file")].toString(), Q("meadow.jpg"));
    EXPECT_EQ(facts[Q("camera")].toString(), Q("1/250s, f/5.6"));
    EXPECT_EQ(facts[Q("report")].toArray(), QJsonArray::fromStringList(lines));
    EXPECT_EQ(Object(Run("info --json meadow.jpg"))[Q("camera")].toString(), Q("1/250s, f/5.6"));
    EXPECT_TRUE(Run("info meadow.jpg").out.endsWith(Q("  Camera: 1/250s, f/5.6\n")));
    Make("plain.jpg");
    EXPECT_EQ(Run("camera --json plain.jpg").out, Q("{\"camera\":\"\",\"file\":\"plain.jpg\",\"report\":[]}\n"));
}

// ---- script ----

TEST_F(Hv_Options, A_Script_Of_Several_Lines_Is_Printed_On_One_And_Kept_In_Json)
{
    const char* const script = "Text(\"a\nb\")";
    Make("a.jpg", script);
    EXPECT_EQ(Run("script get a.jpg").out, Q("Text(\"a b\")\n"));
    EXPECT_EQ(Object(Run("script get --json a.jpg"))[Q("script")].toString(), Q(script));
    EXPECT_EQ(Run({Q("script"), Q("check"), Q(script)}).out, Q("Text(\"a b\")\n"));
}

TEST_F(Hv_Options, Script_Check_Tells_Of_What_It_Leaves_Out)
{
    const Answer answer = Run("script check Crop(1,2,3,4);Swirl(1)");
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.out, Q("Crop(1,2,3,4)\n"));
    EXPECT_EQ(answer.messages, Q("hv: an item does not begin with a known keyword\n"));
    EXPECT_EQ(Run("script check Crop(1,2,3,4);").messages, QString());
    const Answer damaged = Run("script check Crop(1,2,3,4);Blur(2,50;Gamma(1.2.3)");
    EXPECT_EQ(damaged.status, 0) << "it can be split";
    EXPECT_EQ(damaged.out, Q("Crop(1,2,3,4);Blur(2,50;Gamma(1.2.3)\n"));
    EXPECT_EQ(damaged.messages, Q("hv: item 2 is damaged: Blur(2,50\nhv: item 3 is damaged: Gamma(1.2.3)\n"));
    EXPECT_EQ(Run("script check --json Crop(1,2,3,4);").out, Q("{\"script\":\"Crop(1,2,3,4)\"}\n"));
    EXPECT_EQ(Run("script check --json --items Blur(2,50,K)").out,
              Q("{\"item\":\"Blur(2,50,K)\",\"label\":\"Blur\",\"type\":8}\n"));
}

TEST_F(Hv_Options, Script_Set_Names_A_Damaged_Item_And_Stores_It)
{
    Make("a.jpg");
    const Answer answer = Run("script set Blur(2,50 a.jpg");
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.messages, Q("hv: item 1 is damaged: Blur(2,50\n"));
    EXPECT_EQ(Run("script get a.jpg").out, Q("Blur(2,50\n"));
}

TEST_F(Hv_Options, A_Stored_Script_With_A_Part_Missing_Fails_And_Is_Not_Passed_Over)
{
    Make("a.jpg", "Crop(1,2,3,4)");
    QByteArray bytes = Bytes("a.jpg");
    const auto at = bytes.indexOf(QByteArray("Halvine script\0\1\1", 17));
    ASSERT_GT(at, 0);
    bytes[at + 16] = 2; // of two parts the second is not there
    Put("a.jpg", bytes);
    const QStringList commands[] = {{Q("script"), Q("get")}, {Q("histogram")}, {Q("render"), Q("-o"), Q("b.jpg")}};
    for (const QStringList& command : commands) {
        const Answer answer = Run(command + QStringList{Q("a.jpg")});
        EXPECT_EQ(answer.status, 1) << command.join(u' ').toStdString();
        EXPECT_EQ(answer.messages.count(u'\n'), 1) << answer.messages.toStdString();
        EXPECT_TRUE(answer.messages.startsWith(Q("hv: a.jpg: "))) << answer.messages.toStdString();
        EXPECT_EQ(answer.out, QString());
    }
    EXPECT_EQ(Files(), QStringList{Q("a.jpg")});
}

// ---- render ----

TEST_F(Hv_Options, Render_Names_The_Files_Of_A_Folder_By_Their_Type)
{
    Make("a.jpg");
    ASSERT_TRUE(QFile::copy(Path("a.jpg"), Path("b.JPEG")));
    Make("c.tif");
    EXPECT_EQ(Run("render a.jpg b.JPEG c.tif -o j --type JPG").status, 0);
    EXPECT_EQ(QDir(Path("j")).entryList(QDir::Files, QDir::Name | QDir::IgnoreCase),
              (QStringList{Q("a.jpg"), Q("b.JPEG"), Q("c.jpg")}));
    EXPECT_EQ(Run("render a.jpg c.tif -o t --type TIF").status, 0);
    EXPECT_EQ(QDir(Path("t")).entryList(QDir::Files), (QStringList{Q("a.tif"), Q("c.tif")}));
    EXPECT_EQ(File_Type_From_Signature(Path("t/a.tif")), 2);
    EXPECT_EQ(Run("render a.jpg -o single/").status, 0);
    EXPECT_EQ(QDir(Path("single")).entryList(QDir::Files), QStringList{Q("a.jpg")}) << "a folder by its last sign";
}

TEST_F(Hv_Options, Render_Takes_The_Type_From_The_Name_Of_The_New_File)
{
    Make("a.tif");
    for (const auto& [name, type] : {std::pair{"b.jif", 1}, {"b.jpeg", 1}, {"b.TIFF", 2}, {"b.out", 2}}) {
        EXPECT_EQ(Run({Q("render"), Q("a.tif"), Q("-o"), Q(name)}).status, 0);
        EXPECT_EQ(File_Type_From_Signature(Path(name)), type) << name;
    }
}

TEST_F(Hv_Options, Render_Turns_The_Dots_Per_Inch_With_The_Picture)
{
    Make("a.tif");
    for (const auto& [degrees, horizontal] : {std::pair{"0", 300}, {"90", 200}, {"180", 300}, {"270", 200}}) {
        EXPECT_EQ(
            Run({Q("render"), Q("a.tif"), Q("-o"), Q("b.tif"), Q("--overwrite"), Q("--rotate"), Q(degrees)}).status, 0);
        EXPECT_EQ(Facts("b.tif").horizontal_dpi, horizontal) << degrees;
        EXPECT_EQ(Facts("b.tif").vertical_dpi, 500 - horizontal) << degrees;
    }
}

TEST_F(Hv_Options, Quality_Makes_Files_Smaller)
{
    Make("a.jpg", "ColBal(1,1,0.5)");
    EXPECT_EQ(Run("render a.jpg -o low.jpg --quality 5").status, 0);
    EXPECT_EQ(Run("render a.jpg -o same.jpg").status, 0);
    EXPECT_LT(Bytes("low.jpg").size(), Bytes("same.jpg").size());
    EXPECT_EQ(Run("save a.jpg --quality 5").status, 0);
    EXPECT_LT(Bytes("a-hv.jpg").size(), Bytes("a.jpg").size());
}

TEST_F(Hv_Options, Render_Writes_Over_No_Folder_And_No_Damaged_Source)
{
    Make("a.jpg");
    ASSERT_TRUE(QDir(folder.path()).mkpath(Q("out/a.jpg")));
    const Answer on_folder = Run("render a.jpg -o out --overwrite");
    EXPECT_EQ(on_folder.status, 1);
    EXPECT_EQ(on_folder.messages, Q("hv: a.jpg: out/a.jpg is a folder\n"));
    const QByteArray half = Bytes("a.jpg").left(Bytes("a.jpg").size() / 2);
    Put("half.jpg", half);
    const Answer onto_itself = Run("render half.jpg -o half.jpg --overwrite");
    EXPECT_EQ(onto_itself.status, 1);
    EXPECT_EQ(onto_itself.messages, Q("hv: half.jpg: was read with errors and is not written over\n"));
    EXPECT_EQ(Bytes("half.jpg"), half);
    EXPECT_EQ(Run("render half.jpg -o whole.jpg").status, 0) << "what can be seen of it goes elsewhere";
}

TEST_F(Hv_Options, Render_Never_Makes_One_File_Of_Two_Pictures)
{
    Make("a.jpg");
    Make("a.tif", "Crop(8,0,0,0)");
    const Answer answer = Run("render a.jpg a.tif a.jpg -o out --type JPG --overwrite");
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.messages, Q("hv: a.tif: out/a.jpg was just written from a.jpg\n"));
    EXPECT_EQ(Size("out/a.jpg"), (Pixel_Size{64, 48}));
}

TEST_F(Hv_Options, Render_Puts_Back_What_An_Interrupted_Save_Left_In_The_Target_Folder)
{
    Make("a.jpg");
    ASSERT_TRUE(QDir(folder.path()).mkdir(Q("out")));
    ASSERT_TRUE(QFile::copy(Path("a.jpg"), Path("out/b.jpg~")));
    const Answer answer = Run("render a.jpg -o out/b.jpg");
    EXPECT_EQ(answer.status, 1) << "b.jpg is there again";
    EXPECT_TRUE(answer.messages.contains(Q("b.jpg: was put back after an interrupted save")))
        << answer.messages.toStdString();
    EXPECT_TRUE(answer.messages.contains(Q("already exists"))) << answer.messages.toStdString();
}

// ---- save, rotate, snapshot, histogram ----

TEST_F(Hv_Options, Save_Stores_The_Script_In_A_Copy_Unless_Told_Otherwise)
{
    Make("a.jpg", "Crop(1,2,3,4)");
    EXPECT_EQ(Run("save a.jpg").status, 0);
    EXPECT_EQ(Get_Image_Script(Path("a-hv.jpg"), 0), Q("Crop(1,2,3,4)"));
    EXPECT_EQ(Run("save --rotate 90 --overwrite a.jpg").status, 0);
    EXPECT_EQ(Size("a-hv.jpg"), (Pixel_Size{48, 64}));
    EXPECT_EQ(Get_Image_Script(Path("a-hv.jpg"), 0), Q("Crop(2,3,4,1)")) << "the same part of the picture";
    EXPECT_EQ(Run("save --scripts ignore --overwrite a.jpg").status, 0);
    EXPECT_EQ(Get_Image_Script(Path("a-hv.jpg"), 0), QString());
    const Answer refused = Run("save --to original a.jpg");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.messages, Q("hv: a.jpg: This will overwrite (modify) your original(s), are you sure? No; "
                                  "--overwrite means Yes\n"));
}

TEST_F(Hv_Options, A_Negative_Angle_May_Stand_Anywhere)
{
    for (const char* line : {"rotate -90 a.jpg", "rotate --overwrite -90 a.jpg", "rotate 270 --overwrite a.jpg"}) {
        Make("a.jpg", "Crop(1,2,3,4)");
        EXPECT_EQ(Run(line).status, 0) << line;
        EXPECT_EQ(Size("a.jpg"), (Pixel_Size{48, 64})) << line;
        EXPECT_EQ(Get_Image_Script(Path("a.jpg"), 0), Q("Crop(4,1,2,3)")) << line;
    }
    EXPECT_EQ(Run("rotate -0 --files-from - 90", QByteArray("a.jpg\0", 6)).status, 0) << "an option, and no angle";
    EXPECT_EQ(Size("a.jpg"), (Pixel_Size{64, 48}));
}

TEST_F(Hv_Options, A_File_With_Several_Names_Is_Changed_Only_With_Overwrite)
{
    const QStringList commands[] = {{Q("script"), Q("set"), Q("Crop(1,2,3,4)")},
                                    {Q("script"), Q("clear")},
                                    {Q("describe"), Q("sea")},
                                    {Q("rotate"), Q("180")},
                                    {Q("flip"), Q("h")}};
    for (const QStringList& command : commands) {
        Make("a.jpg");
        ASSERT_EQ(::link(Path("a.jpg").toUtf8().constData(), Path("b.jpg").toUtf8().constData()), 0);
        const QByteArray before = Bytes("a.jpg");
        const Answer refused = Run(command + QStringList{Q("a.jpg")});
        EXPECT_EQ(refused.status, 1) << command.join(u' ').toStdString();
        EXPECT_TRUE(refused.messages.contains(Q("several names"))) << refused.messages.toStdString();
        EXPECT_TRUE(refused.messages.endsWith(Q(" No; --overwrite means Yes\n"))) << refused.messages.toStdString();
        EXPECT_EQ(Bytes("a.jpg"), before);
        EXPECT_EQ(Run(command + QStringList{Q("--overwrite"), Q("a.jpg")}).status, 0)
            << command.join(u' ').toStdString();
        EXPECT_EQ(Bytes("b.jpg"), before) << "the other name keeps the old picture";
        ASSERT_TRUE(QFile::remove(Path("b.jpg")));
    }
}

TEST_F(Hv_Options, Blanks_Around_Items_Are_No_Items_Left_Out)
{
    Make("a.jpg");
    EXPECT_EQ(Run({Q("script"), Q("set"), Q("Crop(1,2,3,4) ;Blur(2,50,K)  ;"), Q("a.jpg")}).status, 0);
    EXPECT_EQ(Run("script get a.jpg").out, Q("Crop(1,2,3,4);Blur(2,50,K)\n"));
}

TEST_F(Hv_Options, A_Turn_By_Nothing_Writes_Nothing)
{
    Make("a.jpg");
    const QByteArray before = Bytes("a.jpg");
    for (const char* degrees : {"0", "360", "-720"}) EXPECT_EQ(Run({Q("rotate"), Q(degrees), Q("a.jpg")}).status, 0);
    EXPECT_EQ(Bytes("a.jpg"), before);
}

TEST_F(Hv_Options, Snapshots_As_Json)
{
    Make("a.tif");
    ASSERT_TRUE(QFile::copy(Path("a.tif"), Path("~a-20260101-000000.tif")));
    const QJsonObject list = Object(Run("snapshot list --json a.tif"));
    EXPECT_EQ(list[Q("file")].toString(), Q("a.tif"));
    EXPECT_EQ(list[Q("snapshots")].toArray(), QJsonArray{Path("~a-20260101-000000.tif")});
    const QJsonObject restored = Object(Run("snapshot restore --json ~a-20260101-000000.tif"));
    EXPECT_EQ(restored[Q("file")].toString(), Path("a.tif"));
    EXPECT_TRUE(QFile::exists(restored[Q("kept_as")].toString())) << "what stood there";
    QThread::sleep(1); // names hold seconds
    const QString printed = Run("snapshot restore ~a-20260101-000000.tif").out;
    EXPECT_TRUE(printed.endsWith(Q(".tif\n")) && QFile::exists(printed.trimmed())) << printed.toStdString();
    ASSERT_TRUE(QFile::remove(Path("a.tif")));
    EXPECT_EQ(Run("snapshot restore ~a-20260101-000000.tif").out, QString()) << "nothing stood there";
    ASSERT_TRUE(QFile::rename(Path("~a-20260101-000000.tif"), Path("~a-20260101-000000.tif~"))); // a save was killed
    EXPECT_EQ(Run("snapshot restore ~a-20260101-000000.tif").status, 0) << "it was put back first";
    const Answer none = Run("snapshot restore a.tif");
    EXPECT_EQ(none.messages, Q("hv: a.tif: is no snapshot\n"));
}

TEST_F(Hv_Options, Histogram_Of_Each_Component)
{
    Make("a.tif");
    for (const char* component : {"RGB", "R", "G", "B", "L", "C", "M", "Y", "K", "k"}) {
        const Answer answer = Run({Q("histogram"), Q("--component"), Q(component), Q("a.tif")});
        const QStringList lines = answer.out.split(u'\n', Qt::SkipEmptyParts);
        ASSERT_EQ(lines.size(), 256) << component;
        int sum = 0;
        for (int level = 0; level < 256; ++level) {
            EXPECT_EQ(lines[level].section(u'\t', 0, 0), QString::number(level));
            sum += lines[level].section(u'\t', 1, 1).toInt();
        }
        EXPECT_EQ(sum, Q(component) == Q("RGB") ? 3 * 64 * 48 : 64 * 48) << component;
    }
    const QJsonObject counts = Object(Run("histogram --json --component b a.tif"));
    EXPECT_EQ(counts[Q("file")].toString(), Q("a.tif"));
    EXPECT_EQ(counts[Q("component")].toString(), Q("B"));
    EXPECT_EQ(counts[Q("counts")].toArray().size(), 256);
    EXPECT_EQ(counts[Q("counts")].toArray()[80].toInt(), 64 * 48);
}

// ---- interruption ----

TEST_F(Hv_Options, Ctrl_C_Finishes_The_File_In_Work_And_Leaves_The_Rest)
{
    Make("a.jpg");
    QStringList arguments{Q("render"),      Q("-o"),       Q("out"),
                          Q("--overwrite"), Q("--script"), Q("Scale(900,900,Lanczos3,-1,-1)")};
    for (int i = 0; i < 2000; ++i) arguments << Q("a.jpg");
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.start(Q(HALVINE_BINARY_DIR "/bin/hv"), arguments);
    while (!QFile::exists(Path("out/a.jpg")) && !process.waitForFinished(5)) {
    }
    ::kill(pid_t(process.processId()), SIGINT);
    ASSERT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 1);
    const QString messages = QString::fromUtf8(process.readAllStandardError());
    EXPECT_TRUE(messages.startsWith(Q("hv: interrupted, ")) && messages.endsWith(Q(" of 2000 files done\n")))
        << messages.toStdString();
    EXPECT_EQ(Size("out/a.jpg"), (Pixel_Size{900, 900}));
    EXPECT_EQ(QDir(Path("out")).entryList(QDir::Files | QDir::Hidden), QStringList{Q("a.jpg")});
}

} // namespace
