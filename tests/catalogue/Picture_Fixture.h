#pragma once

#include "catalogue/File_Entry.h"
#include "tests/catalogue/Catalogue_Fixture.h"
#include "tests/support/Test_Folder.h"

#include <cstring>

/// Draws a small picture whose colours depend on `seed`.
inline Owned_Bitmap Drawn_Bitmap(int width, int height, int seed)
{
    Owned_Bitmap bitmap(Count_Bitmap(Create_Empty_Bitmap_CPP(width, height, 3, 8)));
    Bitmap_Facts facts;
    Get_Bitmap_Facts_CPP(bitmap.Get(), &facts);
    std::vector<std::uint8_t> bytes(std::size_t(facts.stride) * std::size_t(facts.height));
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = std::uint8_t(i * 7 / 5 + std::size_t(seed) * 31);
    Put_Bitmap_Bytes_CPP(bitmap.Get(), bytes.data(), bytes.size());
    return bitmap;
}

inline std::vector<std::uint8_t> Pixels_Of(Bitmap_Handle bitmap)
{
    Bitmap_Facts facts;
    if (!Get_Bitmap_Facts_CPP(bitmap, &facts)) return {};
    std::vector<std::uint8_t> bytes(std::size_t(facts.stride) * std::size_t(facts.height));
    Get_Bitmap_Bytes_CPP(bitmap, bytes.data(), bytes.size());
    return bytes;
}

/// A main window with a folder of real pictures.
class Picture_Test : public Catalogue_Test {
protected:
    QString Path(const QString& name) const { return QString::fromStdString(folder.Path()) + "/" + name; }
    std::string File(const QString& name) const { return folder.File(name.toStdString()); }

    QString Make(const QString& name, int width = 160, int height = 96, int type = 1, const QString& script = {},
                 const QString& comment = {}, int seed = 1)
    {
        EXPECT_TRUE(Save_Bitmap(Drawn_Bitmap(width, height, seed).Get(), Path(name), type,
                                {.comment = comment, .script = script, .parent = {}, .quality = 90}))
            << Last_Image_Error().toStdString();
        return Path(name);
    }
    int Pick(const QString& path)
    {
        const File_Entry entry[] = {Entry_Of_File(path)};
        const int next = form.State().pictures.Count() + 1;
        form.Pick_Files(entry, true, false);
        return form.State().pictures.Is_Index(next) ? form.State().pictures.Item(next).Picture_Key : 0;
    }
    int Pick_New(const QString& name) { return Pick(Make(name)); }
    void Pick_List(const QStringList& paths, bool append = false, bool refresh = false)
    {
        std::vector<File_Entry> entries;
        for (const QString& path : paths) entries.push_back(Entry_Of_File(path));
        form.Pick_Files(entries, append, refresh);
    }
    /// As a caller gets it: in line with its record.
    Bitmap_Handle Thumbnail(int key)
    {
        bool is_copy = false;
        return form.Return_Thumbnail_Picture(key, 0, is_copy);
    }
    QStringList Names() const
    {
        QStringList names;
        for (const std::string& name : folder.Names()) names << QString::fromStdString(name);
        return names;
    }
    Test_Folder folder;
};
