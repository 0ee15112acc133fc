#pragma once

#include "imaging/Brennick_Image_Utilities.h"
#include "tests/imaging/Small_Pictures.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>

inline QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

/// Runs the real program in a folder of generated pictures.
class Hv : public testing::Test {
protected:
    struct Answer {
        int status = -1;
        QString out, messages;
    };

    Answer Run(const QStringList& arguments, const QByteArray& input = {})
    {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(Q("DISPLAY"));
        environment.insert(Q("TZ"), Q("UTC"));
        process.setProcessEnvironment(environment);
        process.start(Q(HALVINE_BINARY_DIR "/bin/hv"), arguments);
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished(120'000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << arguments.join(u' ').toStdString();
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    /// The arguments parted by blanks.
    Answer Run(const char* line, const QByteArray& input = {})
    {
        return Run(Q(line).split(u' ', Qt::SkipEmptyParts), input);
    }

    /// 64 x 48, red grows to the right, green downwards.
    QString Make(const char* name, const char* script = "", const char* comment = "")
    {
        const Owned_Bitmap picture(Drawn_Bitmap(64, 48, [](int x, int y) { return x * 4 << 16 | y * 5 << 8 | 80; }));
        File_Contents contents;
        contents.script = Q(script);
        contents.comment = Q(comment);
        contents.quality = 95;
        contents.horizontal_dpi = 300;
        contents.vertical_dpi = 200;
        EXPECT_TRUE(Save_Bitmap(picture.Get(), Path(name), Q(name).endsWith(Q("tif")) ? 2 : 1, contents));
        return Q(name);
    }
    QString Path(const QString& name) { return folder.filePath(name); }
    QString Path(const char* name) { return folder.filePath(Q(name)); }
    QByteArray Bytes(const char* name)
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }
    Pixel_Size Size(const char* name)
    {
        File_Dimensions facts;
        EXPECT_TRUE(Get_Dimensions(Path(name), 0, facts)) << name;
        return {facts.width, facts.height};
    }
    std::vector<int> Pixels(const char* name)
    {
        const Owned_Bitmap picture(Load_Bitmap(Path(name), 0, 1, 0));
        return Colors_Of(picture.Get());
    }
    QTemporaryDir folder;
};
