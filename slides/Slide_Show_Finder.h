#pragma once

#include <QtCore/QString>

/// Finds the files of one show again after they, or the show, were moved.
class Slide_Show_Finder {
public:
    explicit Slide_Show_Finder(const QString& show_file);

    /// The default folder that the show names.
    void Set_Folder(const QString& folder);

    /// A name that begins with ".\" is looked for in the folder where the last one was found, then beside the show, then
    /// in the folder that the show names. Any other name is taken as it stands; one without any folder before it is a name
    /// below the show's folder as well. Empty when it is nowhere.
    QString Find(const QString& name);

    /// The same in a folder that somebody named; the folder is remembered when the file is in it.
    QString Find_In(const QString& folder, const QString& name);

    /// A file was found by hand.
    void Remember(const QString& found);

    static bool Is_Below_Folder(const QString& name); ///< begins with ".\" (or "./")
    static QString Bare_Name(const QString& name);    ///< without that

private:
    QString own_folder_;
    QString named_folder_;
    QString last_folder_;
};
