// What an independent reader of metadata sees in the files that hv writes. Without exiftool the tests are skipped.

#include "Project_Folders.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QByteArray Output_Of(const QString& program, const QStringList& arguments, int* status = nullptr)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(120'000)) << program.toStdString();
    if (status != nullptr) *status = process.exitCode();
    return process.readAllStandardOutput();
}

/// The sample pictures, made once.
class Other_Reader : public testing::TestWithParam<const char*> {
protected:
    static void SetUpTestSuite()
    {
        if (QStandardPaths::findExecutable("exiftool").isEmpty()) return;
        samples = new QTemporaryDir;
        Output_Of(HALVINE_BINARY_DIR "/bin/hv_make_samples", {samples->path()});
    }
    static void TearDownTestSuite() { delete samples; }

    void SetUp() override
    {
        if (samples == nullptr) GTEST_SKIP() << "exiftool is not installed";
        name = QString::fromLatin1(GetParam());
        ASSERT_TRUE(QFile::copy(samples->filePath(name), Path(name)));
    }
    QString Path(const QString& file) const { return folder.filePath(file); }
    void Run(QStringList arguments)
    {
        int status = -1;
        Output_Of(HALVINE_BINARY_DIR "/bin/hv", arguments, &status);
        ASSERT_EQ(0, status) << arguments.join(' ').toStdString();
    }

    /// Every tag with its group and its whole value, but for those that tell about the file and those in `but`.
    QJsonObject Tags(const QString& file, const QStringList& but = {})
    {
        const QByteArray json =
            Output_Of("exiftool", {"-j", "-G1", "-a", "-u", "-U", "-b", "-n", "-struct", Path(file)});
        QJsonObject tags = QJsonDocument::fromJson(json).array().at(0).toObject();
        EXPECT_GT(tags.size(), 10) << file.toStdString();
        for (const QString& key : tags.keys())
            if (key.startsWith("System:") || key.startsWith("ExifTool:") || key == "SourceFile" || but.contains(key))
                tags.remove(key);
        return tags;
    }
    void Expect_Upright_Without_Thumbnail(const QString& file)
    {
        const QJsonObject tags = Tags(file);
        const QJsonValue orientation = tags.value("IFD0:Orientation");
        EXPECT_TRUE(orientation.isUndefined() || orientation.toInt() == 1) << orientation.toInt();
        QByteArray thumbnail = Output_Of("exiftool", {"-b", "-ThumbnailImage", Path(file)});
        EXPECT_EQ(thumbnail.size(), thumbnail.count('\0')) << "the old picture shows in the thumbnail";
    }

    static inline QTemporaryDir* samples = nullptr;
    QTemporaryDir folder;
    QString name;
};

const auto With_Samples =
    testing::Values("meadow.jpg", "portrait.jpg", "print_cmyk.jpg", "night.jpg", "portrait_lzw_tiled.tif",
                    "portrait_grey.tif", "night_alpha_big.tif", "night_16_bit_big_endian.tif");

std::string Name_Of(const testing::TestParamInfo<const char*>& row)
{
    return QString::fromLatin1(row.param).replace('.', '_').toStdString();
}

INSTANTIATE_TEST_SUITE_P(Samples, Other_Reader, With_Samples, Name_Of);

TEST_P(Other_Reader, Sees_A_Picture_Upright_And_No_Old_Thumbnail_After_Pixels_Changed)
{
    const QString type = name.endsWith("jpg") ? "jpg" : "tif";
    Run({"render", "--script", "ColBal(1,1,0.8)", "-o", Path("out." + type), Path(name)});
    Expect_Upright_Without_Thumbnail("out." + type);
    Run({"render", "--script", "Crop(10,10,10,10)", "-o", Path("other." + QString(type == "jpg" ? "tif" : "jpg")),
         Path(name)});
    Expect_Upright_Without_Thumbnail("other." + QString(type == "jpg" ? "tif" : "jpg"));
    Run({"rotate", "180", "--overwrite", Path(name)}); // 90 would bring a portrait back as it is stored
    Expect_Upright_Without_Thumbnail(name);
}

TEST_P(Other_Reader, Sees_All_Else_Unchanged_After_Texts_Changed)
{
    const QStringList ours{"File:Comment", "IFD0:ImageDescription", "IFD0:Exif_0xfe85"};
    const QJsonObject before = Tags(name, ours);
    Run({"script", "set", "Crop(1,2,3,4)", Path(name)});
    Run({"describe", "a description", Path(name)});
    Run({"save", "--to", "original", "--overwrite", Path(name)});
    const QJsonObject after = Tags(name, ours);
    for (const QString& key : before.keys()) EXPECT_EQ(before.value(key), after.value(key)) << key.toStdString();
    for (const QString& key : after.keys()) EXPECT_TRUE(before.contains(key)) << key.toStdString() << " is new";
    const QJsonObject texts = Tags(name);
    EXPECT_EQ("a description",
              texts.value(name.endsWith("jpg") ? "File:Comment" : "IFD0:ImageDescription").toString().toStdString());
}

/// Of those that exiftool can write.
class Other_Writer : public Other_Reader {};

INSTANTIATE_TEST_SUITE_P(Samples, Other_Writer,
                         testing::Values("meadow.jpg", "portrait.jpg", "print_cmyk.jpg", "portrait_lzw_tiled.tif",
                                         "portrait_grey.tif", "night_16_bit_big_endian.tif"),
                         Name_Of);

TEST_P(Other_Writer, Finds_What_It_Stored_In_A_Copy_Of_The_Other_Type)
{
    // Caption, keywords and author of an editor, and the file properties of a desktop.
    int status = -1;
    Output_Of("exiftool",
              {"-overwrite_original", "-IPTC:Keywords=meadow", "-IPTC:Keywords=spring", "-IPTC:By-line=Anna Kern",
               "-IPTC:Caption-Abstract=At the river", "-IPTC:CodedCharacterSet=UTF8", "-Photoshop:URL=about:river",
               "-XMP-dc:Subject=meadow", "-IFD0:XPKeywords=meadow;spring", "-IFD0:Rating=4", "-IFD0:Artist=Anna",
               Path(name)},
              &status);
    ASSERT_EQ(0, status);
    const QString there = name.endsWith("jpg") ? "copy.tif" : "copy.jpg",
                  back = name.endsWith("jpg") ? "back.jpg" : "back.tif";
    Run({"render", "--no-script", "-o", Path(there), Path(name)});
    Run({"render", "--no-script", "-o", Path(back), Path(there)});
    const QJsonObject before = Tags(name);
    for (const QString& copy : {there, back}) {
        const QJsonObject after = Tags(copy);
        for (const char* key : {"IPTC:Keywords", "IPTC:By-line", "IPTC:Caption-Abstract", "IPTC:CodedCharacterSet",
                                "Photoshop:URL", "XMP-dc:Subject", "IFD0:XPKeywords", "IFD0:Rating", "IFD0:Artist"}) {
            EXPECT_FALSE(before.value(key).isUndefined()) << key;
            EXPECT_EQ(before.value(key), after.value(key)) << copy.toStdString() << ": " << key;
        }
        EXPECT_EQ("", Output_Of("exiftool", {"-s3", "-Warning", Path(copy)}).toStdString());
    }
}

TEST_P(Other_Writer, Finds_XMP_That_Is_Longer_Than_A_Segment_In_A_Copy_Of_The_Other_Type)
{
    QFile history(Path("history.txt"));
    ASSERT_TRUE(history.open(QIODevice::WriteOnly));
    for (int i = 0; i < 20'000; ++i) history.write(QByteArray::number(i) + " turned; ");
    history.close();
    int status = -1;
    Output_Of(
        "exiftool",
        {"-overwrite_original", "-XMP-photoshop:History<=" + history.fileName(), "-XMP-dc:Subject=meadow", Path(name)},
        &status);
    ASSERT_EQ(0, status);
    const QString types[] = {name.endsWith("jpg") ? "tif" : "jpg", name.endsWith("jpg") ? "jpg" : "tif"};
    const QJsonObject before = Tags(name);
    ASSERT_GT(before.value("XMP-photoshop:History").toString().size(), 200'000);
    QString from = name;
    for (const QString& copy : {"there." + types[0], "back." + types[1], "again." + types[0]}) {
        Run({"render", "--no-script", "-o", Path(copy), Path(from)});
        const QJsonObject after = Tags(copy);
        for (const char* key : {"XMP-photoshop:History", "XMP-dc:Subject"})
            EXPECT_EQ(before.value(key), after.value(key)) << copy.toStdString() << ": " << key;
        EXPECT_EQ("", Output_Of("exiftool", {"-s3", "-a", "-Warning", Path(copy)}).toStdString());
        from = copy;
    }
}

} // namespace
