// The real program on generated pictures.

#include "Project_Folders.h"
#include "tests/frame/command/Hv_Fixture.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QThread>
#include <sys/stat.h>

namespace {

// ---- habits ----

TEST_F(Hv, Wrong_Usage_Ends_With_Two)
{
    Make("a.jpg");
    const char* const lines[] = {"",
                                 "dance",
                                 "info",
                                 "info --nonsense a.jpg",
                                 "rotate 45 a.jpg",
                                 "rotate 90",
                                 "flip x a.jpg",
                                 "script",
                                 "script set Crop(1,2,3,4);Text(\"a\") a.jpg",
                                 "render a.jpg",
                                 "render a.jpg -o b.jpg --quality 101",
                                 "render a.jpg -o b.jpg --type PNG",
                                 "render a.jpg -o b.jpg --divisor 0",
                                 "render a.jpg -o b.jpg --no-script --prepared People",
                                 "render a.jpg -o b.jpg --prepared Nobody",
                                 "save a.jpg --scripts perhaps",
                                 "histogram a.jpg --component RG",
                                 "histogram a.jpg --files-from -",
                                 "info --files-from no-list"};
    for (const char* line : lines) {
        const Answer answer = Run(line);
        EXPECT_EQ(answer.status, 2) << line;
        EXPECT_TRUE(answer.messages.startsWith(Q("hv: "))) << answer.messages.toStdString();
        EXPECT_EQ(answer.messages.count(u'\n'), 1) << answer.messages.toStdString();
        EXPECT_TRUE(answer.out.isEmpty());
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList(Q("a.jpg"))) << "nothing was done";
}

TEST_F(Hv, Help_And_Version_End_With_Zero)
{
    EXPECT_TRUE(Run("--version").out.startsWith(Q("hv ")));
    EXPECT_TRUE(Run("--help").out.contains(Q("histogram")));
    const Answer help = Run("render --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.out.contains(Q("--divisor")));
}

TEST_F(Hv, Every_Command_Stands_In_The_Manual_And_Is_Offered_To_The_Shell)
{
    const auto text = [](const char* name) {
        QFile file(Q(HALVINE_SOURCE_DIR "/resources/") + Q(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        return QString::fromUtf8(file.readAll());
    };
    const QString manual = text("man/hv.1"), completion = text("completion/hv");
    const QStringList offered = completion.section(Q("commands=\""), 1, 1).section(u'"', 0, 0).split(u' ');
    int commands = 0;
    for (const QString& line : Run("--help").out.split(u'\n')) {
        if (!line.startsWith(Q("  "))) continue;
        const QString command = line.trimmed().section(u' ', 0, 0);
        ++commands;
        EXPECT_TRUE(manual.contains(Q("hv ") + command)) << command.toStdString();
        EXPECT_TRUE(offered.contains(command)) << command.toStdString();
        EXPECT_TRUE(Run({command, Q("--help")}).out.contains(Q("--json"))) << command.toStdString();
    }
    EXPECT_EQ(offered.size(), commands);
}

TEST_F(Hv, A_Bad_File_Costs_One_Line_And_The_Others_Are_Done)
{
    Make("a.jpg");
    QFile junk(Path("junk.jpg"));
    ASSERT_TRUE(junk.open(QIODevice::WriteOnly));
    junk.write("no picture");
    junk.close();
    ASSERT_EQ(mkfifo(Path("pipe.jpg").toUtf8().constData(), 0600), 0);
    const Answer answer = Run("info missing.jpg junk.jpg pipe.jpg a.jpg");
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.messages.count(u'\n'), 3) << answer.messages.toStdString();
    EXPECT_TRUE(answer.messages.contains(Q("hv: missing.jpg: ")));
    EXPECT_TRUE(answer.out.startsWith(Q("a.jpg\n")));
}

TEST_F(Hv, Files_Come_From_A_List)
{
    Make("a b.jpg");
    Make("c.tif");
    const Answer lines = Run("script get --files-from -", "a b.jpg\nc.tif\n");
    EXPECT_EQ(lines.out, Q("a b.jpg\t\nc.tif\t\n"));
    const Answer zeros = Run("script get -0 --files-from -", QByteArray("a b.jpg\0c.tif\0", 14));
    EXPECT_EQ(zeros.out, lines.out);
    EXPECT_EQ(Run("info --files-from -", "").status, 0) << "an empty list is done at once";
}

// ---- reading ----

TEST_F(Hv, Info_As_Json)
{
    Make("a.tif", "Crop(1,2,3,4)", "Grüße");
    const Answer answer = Run("info --json a.tif");
    const QJsonObject facts = QJsonDocument::fromJson(answer.out.toUtf8()).object();
    EXPECT_EQ(facts[Q("file")].toString(), Q("a.tif"));
    EXPECT_EQ(facts[Q("type")].toString(), Q("TIFF"));
    EXPECT_EQ(facts[Q("width")].toInt(), 64);
    EXPECT_EQ(facts[Q("height")].toInt(), 48);
    EXPECT_EQ(facts[Q("depth")].toInt(), 24);
    EXPECT_EQ(facts[Q("horizontal_dpi")].toInt(), 300);
    EXPECT_EQ(facts[Q("vertical_dpi")].toInt(), 200);
    EXPECT_EQ(facts[Q("description")].toString(), Q("Grüße"));
    EXPECT_EQ(facts[Q("script")].toString(), Q("Crop(1,2,3,4)"));
    EXPECT_TRUE(QDateTime::fromString(facts[Q("date")].toString(), Qt::ISODate).isValid());
    EXPECT_TRUE(facts.contains(Q("camera")) && facts.contains(Q("size_kb")));
}

TEST_F(Hv, Camera_Tells_When_There_Is_None)
{
    Make("a.jpg");
    Make("b.jpg");
    EXPECT_EQ(Run("camera a.jpg").out, Q("No camera information available\n"));
    EXPECT_EQ(Run("camera a.jpg b.jpg").out,
              Q("a.jpg:\nNo camera information available\nb.jpg:\nNo camera information available\n"));
}

TEST_F(Hv, Script_Check_Gives_The_Normal_Form)
{
    EXPECT_EQ(Run("script check conopt(0,0,lum);Swirl(1);Crop(1,2,3,4);").out, Q("conopt(0,0,lum);Crop(1,2,3,4)\n"));
    EXPECT_EQ(Run("script check --items Unsharp(1);SatVal(1,1)").out,
              Q("7\tSharpen\tUnsharp(1)\n2\tSaturation\tSatVal(1,1)\n"));
    const Answer bad = Run("script check Crop(1,2,3,4);Text(\"a\")");
    EXPECT_EQ(bad.status, 1);
    EXPECT_TRUE(bad.out.isEmpty());
}

TEST_F(Hv, Histogram_Counts_What_Is_Rendered)
{
    Make("a.tif", "ColBal(0,1,1)");
    const QStringList with = Run("histogram a.tif --component R").out.split(u'\n');
    ASSERT_EQ(with.size(), 257);
    EXPECT_EQ(with[0], Q("0\t3072"));
    const QStringList without = Run("histogram a.tif --component R --no-script").out.split(u'\n');
    EXPECT_EQ(without[0], Q("0\t48"));
}

// ---- texts ----

TEST_F(Hv, Texts_Are_Stored_With_The_Same_Pixels_And_Times)
{
    for (const char* name : {"a.jpg", "b.tif"}) {
        Make(name);
        const auto before = Pixels(name);
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const QDateTime time(QDate(2020, 1, 2), QTime(3, 4, 5));
        file.setFileTime(time, QFileDevice::FileModificationTime);
        file.close();
        EXPECT_EQ(Run({Q("script"), Q("set"), Q("Crop(1,2,3,4);"), Q(name)}).status, 0);
        EXPECT_EQ(Run({Q("describe"), Q("Grüße\nan alle"), Q(name)}).status, 0);
        EXPECT_EQ(Get_Image_Script(Path(name), 0), Q("Crop(1,2,3,4)"));
        EXPECT_EQ(Get_Comment(Path(name), 0), Q("Grüße\nan alle"));
        EXPECT_EQ(Run({Q("script"), Q("clear"), Q(name)}).status, 0);
        EXPECT_EQ(Get_Image_Script(Path(name), 0), QString());
        EXPECT_EQ(Get_Comment(Path(name), 0), Q("Grüße\nan alle")) << "the description stays";
        EXPECT_EQ(Pixels(name), before);
        EXPECT_EQ(QFileInfo(Path(name)).lastModified(), time);
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 2) << "nothing is left behind";
}

TEST_F(Hv, A_Description_That_Does_Not_Fit_Is_Refused)
{
    Make("a.jpg");
    const QByteArray before = Bytes("a.jpg");
    const Answer answer = Run({Q("describe"), QString(2000, u'x'), Q("a.jpg")});
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.messages.count(u'\n'), 1) << answer.messages.toStdString();
    EXPECT_EQ(Bytes("a.jpg"), before);
}

// ---- pixels ----

TEST_F(Hv, Render_Runs_The_Script_And_Takes_The_Description_Along)
{
    Make("a.tif", "Crop(10,20,30,4)", "Grüße");
    EXPECT_EQ(Run("render a.tif -o out.jpg").status, 0);
    EXPECT_EQ(Size("out.jpg"), (Pixel_Size{24, 24}));
    EXPECT_EQ(File_Type_From_Signature(Path("out.jpg")), 1);
    EXPECT_EQ(Get_Comment(Path("out.jpg"), 0), Q("Grüße"));
    EXPECT_EQ(Get_Image_Script(Path("out.jpg"), 0), QString()) << "it is in the pixels";
}

TEST_F(Hv, Render_Options)
{
    Make("a.tif", "Crop(10,20,30,4)");
    const auto render = [this](const QStringList& options) {
        EXPECT_EQ(Run(QStringList{Q("render"), Q("a.tif"), Q("-o"), Q("o.tif"), Q("--overwrite")} + options).status, 0);
        return Size("o.tif");
    };
    EXPECT_EQ(render({Q("--no-script")}), (Pixel_Size{64, 48}));
    EXPECT_EQ(render({Q("--rotate"), Q("90")}), (Pixel_Size{24, 24}));
    EXPECT_EQ(render({Q("--rotate=-90"), Q("--no-script")}), (Pixel_Size{48, 64}));
    EXPECT_EQ(render({Q("--divisor"), Q("2")}), (Pixel_Size{12, 12}));
    EXPECT_EQ(render({Q("--script"), Q("Crop(0,0,0,1)")}), (Pixel_Size{64, 47}));
    EXPECT_EQ(render({Q("--prepared"), Q("people")}), (Pixel_Size{64, 48}));
}

TEST_F(Hv, Render_Of_Several_Goes_Into_A_Folder_And_Overwrites_Nothing)
{
    Make("a.jpg");
    Make("b.tif");
    EXPECT_EQ(Run("render a.jpg b.tif -o out --type JPG").status, 0);
    EXPECT_EQ(QDir(Path("out")).entryList(QDir::Files), (QStringList{Q("a.jpg"), Q("b.jpg")}));
    const QByteArray before = Bytes("out/a.jpg");
    const Answer again = Run("render a.jpg -o out --rotate 180");
    EXPECT_EQ(again.status, 1);
    EXPECT_TRUE(again.messages.contains(Q("already exists"))) << again.messages.toStdString();
    EXPECT_EQ(Bytes("out/a.jpg"), before);
}

TEST_F(Hv, Four_Turns_And_Two_Flips_Bring_The_Pixels_Back)
{
    for (const char* name : {"a.jpg", "b.tif"}) {
        Make(name, "ColBal(1,1,1)", "stays");
        const auto before = Pixels(name);
        EXPECT_EQ(Run({Q("rotate"), Q("90"), Q(name)}).status, 0);
        EXPECT_EQ(Size(name), (Pixel_Size{48, 64}));
        for (const char* degrees : {"-180", "90"}) EXPECT_EQ(Run({Q("rotate"), Q(degrees), Q(name)}).status, 0);
        EXPECT_EQ(Pixels(name), before);
        for (int i = 0; i < 2; ++i) EXPECT_EQ(Run({Q("flip"), Q("h"), Q(name)}).status, 0);
        EXPECT_EQ(Pixels(name), before);
        EXPECT_EQ(Get_Image_Script(Path(name), 0), Q("ColBal(1,1,1)"));
        EXPECT_EQ(Get_Comment(Path(name), 0), Q("stays"));
    }
}

TEST_F(Hv, A_Flip_Takes_The_Crop_Of_The_Script_To_The_Other_Side)
{
    Make("a.tif", "Crop(10,2,3,4)");
    EXPECT_EQ(Run("flip h a.tif").status, 0);
    EXPECT_EQ(Get_Image_Script(Path("a.tif"), 0), Q("Crop(3,2,10,4)"));
    EXPECT_EQ(Run("flip v a.tif").status, 0);
    EXPECT_EQ(Get_Image_Script(Path("a.tif"), 0), Q("Crop(3,4,10,2)"));
}

TEST_F(Hv, A_Script_Of_Unknown_Or_Too_Many_Items_Is_Stored_Nowhere)
{
    Make("a.jpg", "Crop(1,2,3,4)");
    const QByteArray before = Bytes("a.jpg");
    const Answer unknown = Run("script set Crp(9,9,9,9) a.jpg");
    EXPECT_EQ(unknown.status, 2);
    EXPECT_TRUE(unknown.messages.contains(Q("known keyword"))) << unknown.messages.toStdString();
    const QString many = QStringList(1001, Q("Crop(1,2,3,4)")).join(u';');
    for (const QStringList& command :
         {QStringList{Q("script"), Q("set"), many, Q("a.jpg")},
          QStringList{Q("render"), Q("--script"), many, Q("-o"), Q("b.jpg"), Q("a.jpg")}}) {
        const Answer answer = Run(command);
        EXPECT_EQ(answer.status, 2);
        EXPECT_TRUE(answer.messages.contains(Q("the script has more than 1000 items")))
            << answer.messages.toStdString();
    }
    EXPECT_EQ(Bytes("a.jpg"), before);
    Make("c.jpg", many.toLatin1().constData());
    const Answer stored = Run("render -o b.jpg c.jpg");
    EXPECT_EQ(stored.status, 1) << "half a script is another picture";
    EXPECT_TRUE(stored.messages.startsWith(Q("hv: c.jpg: the script has more"))) << stored.messages.toStdString();
    EXPECT_FALSE(QFileInfo::exists(Path("b.jpg")));
}

TEST_F(Hv, Texts_Beyond_The_Limits_Are_Refused_With_The_Limit)
{
    Make("a.jpg");
    const QByteArray before = Bytes("a.jpg");
    const Answer description = Run({Q("describe"), QString(1025, u'd'), Q("a.jpg")});
    EXPECT_EQ(description.status, 1);
    EXPECT_TRUE(description.messages.contains(Q("1025 bytes, 1024 are the limit")))
        << description.messages.toStdString();
    const Answer script = Run({Q("script"), Q("set"), Q("Text(\"%1\")").arg(QString(65'600, u't')), Q("a.jpg")});
    EXPECT_EQ(script.status, 1);
    EXPECT_TRUE(script.messages.contains(Q("65535 are the limit"))) << script.messages.left(300).toStdString();
    EXPECT_EQ(Bytes("a.jpg"), before);
}

TEST_F(Hv, A_Picture_Cut_Off_In_Its_Head_Fails_In_Every_Command_With_One_Line)
{
    Make("a.jpg");
    QFile file(Path("a.jpg"));
    ASSERT_TRUE(file.resize(200));
    const QStringList commands[] = {{Q("info")},
                                    {Q("camera")},
                                    {Q("script"), Q("get")},
                                    {Q("script"), Q("clear")},
                                    {Q("describe"), Q("d")},
                                    {Q("histogram")},
                                    {Q("rotate"), Q("90")},
                                    {Q("flip"), Q("h")},
                                    {Q("save")},
                                    {Q("snapshot"), Q("save")},
                                    {Q("render"), Q("-o"), Q("b.jpg")}};
    for (const QStringList& command : commands) {
        const Answer answer = Run(command + QStringList{Q("a.jpg")});
        EXPECT_EQ(answer.status, 1) << command.join(u' ').toStdString();
        EXPECT_EQ(answer.messages, Q("hv: a.jpg: ends inside its header, or is damaged\n"))
            << command.join(u' ').toStdString();
        EXPECT_EQ(answer.out, QString()) << command.join(u' ').toStdString();
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{Q("a.jpg")});
}

TEST_F(Hv, Save_Makes_Copies_And_Leaves_Originals_Alone)
{
    Make("a.tif", "Crop(10,20,30,4)");
    const QByteArray before = Bytes("a.tif");
    EXPECT_EQ(Run("save --scripts run a.tif").status, 0);
    EXPECT_EQ(Size("a-rs.tif"), (Pixel_Size{24, 24}));
    EXPECT_EQ(Run("save --type JPG a.tif").status, 0);
    EXPECT_EQ(Get_Image_Script(Path("a-hv.jpg"), 0), Q("Crop(10,20,30,4)"));
    EXPECT_EQ(Run("save --type JPG a.tif").status, 1) << "the copy exists";
    EXPECT_EQ(Run("save --to original --scripts ignore a.tif").status, 1);
    EXPECT_EQ(Bytes("a.tif"), before);
    EXPECT_EQ(Run("save --to original --scripts ignore --overwrite a.tif").status, 0);
    EXPECT_EQ(Get_Image_Script(Path("a.tif"), 0), QString());
}

TEST_F(Hv, Snapshots_Are_Kept_Listed_And_Restored)
{
    Make("a.tif", "", "first");
    EXPECT_EQ(Run("snapshot save a.tif").status, 0);
    const QString snapshot = Run("snapshot list a.tif").out.trimmed();
    EXPECT_TRUE(QFileInfo::exists(snapshot)) << snapshot.toStdString();
    EXPECT_EQ(Run("describe second a.tif").status, 0);
    QThread::sleep(1); // names hold seconds
    EXPECT_EQ(Run({Q("snapshot"), Q("restore"), snapshot}).status, 0);
    EXPECT_EQ(Get_Comment(Path("a.tif"), 0), Q("first"));
    EXPECT_EQ(Run("snapshot list a.tif").out.count(u'\n'), 2) << "what stood there is one now";
    EXPECT_EQ(Run("snapshot restore a.tif").status, 1) << "no snapshot";
}

TEST_F(Hv, Slides_Are_Made_Listed_And_Copied)
{
    Make("a.jpg");
    Make("b.jpg");
    const Answer made = Run("slides make show.hvs --time 3 a.jpg none.jpg b.jpg");
    EXPECT_EQ(made.status, 1);
    EXPECT_EQ(made.messages, Q("hv: none.jpg: no such file\n"));
    const QString lines = Q("time\t3.00\n") + Path("a.jpg") + Q("\t0\t0.00\n") + Path("b.jpg") + Q("\t0\t0.00\n");
    EXPECT_EQ(Run("slides list show.hvs").out, lines);
    EXPECT_EQ(Run("slides make show.hvs a.jpg").status, 1) << "it is there already";
    EXPECT_EQ(Run("slides list show.hvs").out, lines);
    ASSERT_TRUE(QDir(folder.path()).mkdir(Q("to")));
    EXPECT_EQ(Run("slides copy show.hvs to/copy").status, 0);
    QFile::remove(Path("to/ss002-b.jpg"));
    const Answer listed = Run("slides list to/copy.hvs");
    EXPECT_EQ(listed.status, 1);
    EXPECT_EQ(listed.out, Q("time\t3.00\n") + Path("to/ss001-a.jpg") + Q("\t0\t0.00\n"));
    EXPECT_EQ(listed.messages, Q("hv: .\\ss002-b.jpg: no such file\n"));
    EXPECT_EQ(Run("slides list none.hvs").status, 1);
    EXPECT_EQ(Run("slides dance").status, 2);
}

TEST_F(Hv, Search_Prints_The_Paths)
{
    Make("a.jpg", "", "the sea");
    ASSERT_TRUE(QDir(folder.path()).mkdir(Q("sub")));
    Make("sub/b.tif", "", "The Sea");
    EXPECT_EQ(Run("search names * .").out, Q("./a.jpg\n./sub/b.tif\n"));
    EXPECT_EQ(Run("search names * . --files *.TIF").out, Q("./sub/b.tif\n"));
    EXPECT_EQ(Run("search descriptions *sea .").out, Q("./a.jpg\n./sub/b.tif\n"));
    EXPECT_EQ(Run("search names * none").status, 1);
    EXPECT_EQ(Run("search names [a .").status, 2);
    EXPECT_EQ(Run("search pixels * .").status, 2);
}

TEST_F(Hv, A_Picture_That_A_Crash_Left_Under_Its_Kept_Name_Is_Put_Back_Before_A_Change)
{
    Make("a.jpg");
    Make("b.jpg");
    ASSERT_TRUE(QFile::rename(Path("a.jpg"), Path("a.jpg~")));
    EXPECT_EQ(Run("info a.jpg").status, 1) << "reading changes no folder";
    const Answer answer = Run("rotate 90 a.jpg b.jpg");
    EXPECT_EQ(answer.status, 0) << answer.messages.toStdString();
    EXPECT_EQ(answer.messages.count(Q("a.jpg: was put back after an interrupted save")), 1)
        << answer.messages.toStdString();
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList({Q("a.jpg"), Q("b.jpg")}));
    EXPECT_EQ(Size("a.jpg").width, 48);
}

TEST_F(Hv, A_Full_Standard_Output_Is_No_Success)
{
    Make("a.jpg");
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.setStandardOutputFile(Q("/dev/full"));
    process.start(Q(HALVINE_BINARY_DIR "/bin/hv"), {Q("info"), Q("a.jpg")});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 1);
}

} // namespace
