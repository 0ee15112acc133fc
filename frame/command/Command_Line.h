#pragma once

#include "frame/command/Command.h"

#include <QtCore/QCommandLineParser>
#include <optional>

/// The options of one command, with those that all commands share: --help, --json, --files-from, -0.
class Command_Line {
public:
    enum class Takes { Files, Nothing_More }; ///< what stands behind the fixed arguments

    Command_Line(const char* command, Takes takes);

    void Add_Flag(const QString& name, const QString& description);
    void Add_Value(const QString& name, const QString& description, const QString& value_name);

    /// Takes the first arguments that are no options by name, "TEXT" for example.
    void Add_Fixed(const QString& name) { fixed_names_ << name; }

    /// Nothing when the command can run, else the status to end with; help and complaints are printed then.
    std::optional<Exit_Status> Parse(const QStringList& arguments);

    bool Has(const QString& name) const { return parser_.isSet(name); }
    QString Value(const QString& name) const { return parser_.value(name); }
    QString Fixed(int index) const { return fixed_.value(index); }
    const QStringList& Files() const { return files_; }
    bool Wants_Json() const { return Has(QStringLiteral("json")); }

    /// A whole number within limits; without the option `standard`. Nothing, with a complaint, when it is none.
    std::optional<int> Number(const QString& name, int standard, int low, int high) const;

    Exit_Status Complain(const QString& reason) const; ///< prints it and gives Wrong_Usage

private:
    bool Read_File_List(const QString& list);
    void Print_Help() const;

    QString command_;
    Takes takes_;
    QCommandLineParser parser_;
    QStringList fixed_names_;
    QStringList fixed_;
    QStringList files_;
};

/// Degrees as 0, 90, 180 or 270; nothing for other angles.
std::optional<int> Right_Angle(const QString& text);

/// 0 for an empty text, 1 for JPG or JPEG, 2 for TIF or TIFF; nothing for others. Case does not matter.
std::optional<int> File_Type_From_Name(const QString& name);
