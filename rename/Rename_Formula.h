#pragma once

#include "evaluate/Formula_Consent.h"
#include "evaluate/bkcEvaluate.h"

#include <QtCore/QString>
#include <optional>

/// Formulas over pictures: the new root name of a renamed file, and the caption under a printed picture.

/// A formula as it is run: with its name for messages, and with what it may read.
struct Chosen_Formula {
    QString name;
    QString text;
    unsigned allowed_access = Formula::File_Access; ///< bits of Access_Class; see Formula_Consent
    bool operator==(const Chosen_Formula&) const = default;
};

struct Formula_Fault {
    int code = 0;
    QString description;
    int position = 0; ///< 1-based, in the formula
    bool operator==(const Formula_Fault&) const = default;
};

/// "Type mismatch (Formula Subject-Date-Serial, Character Position 7)"
QString Formula_Fault_Line(const Formula_Fault& fault, const QString& formula_name);
/// The error, a line end, and "(At Character Position 7)".
QString Formula_Fault_Message(const Formula_Fault& fault);

/// What a rename formula sees of a file.
struct Rename_Formula_Facts {
    QString folder;    ///< FilePath
    QString root;      ///< FileName
    QString extension; ///< FileExt, with its "." as it will be written, or empty
    double date = 0;   ///< FileDate
    int horz_pixels = 0, vert_pixels = 0;
    QString serial; ///< FileSerial
};

/// Compiles the formula and runs it once with sample values; nothing when that went well.
std::optional<Formula_Fault> Check_Rename_Formula(Formula::Formula_Host_Services& host, const Chosen_Formula& formula);

/// One formula compiled for many files.
class Rename_Formula {
public:
    Rename_Formula(Formula::Formula_Host_Services& host, const Chosen_Formula& formula, const QString& change_to);

    /// Why the formula could not be compiled.
    const std::optional<Formula_Fault>& Compile_Fault() const { return compile_fault_; }

    /// Empty when the formula fails for this file.
    QString New_Root(const Rename_Formula_Facts& facts);

private:
    Formula::bkcEvaluate evaluator_;
    std::optional<Formula_Fault> compile_fault_;
};

/// What a caption formula sees of a picture.
struct Caption_Facts {
    QString folder;      ///< FilePath
    QString root;        ///< FileName
    QString extension;   ///< FileExt, without its "."
    double date = 0;     ///< FileDate
    QString description; ///< FileDescr
};

/// The caption of one picture. The empty formula, which is that of "(none)", gives no caption. An error gives no caption
/// either; it is told in `fault`.
struct Caption {
    QString text;
    std::optional<Formula_Fault> fault;
};
Caption Caption_Of(Formula::Formula_Host_Services& host, const Chosen_Formula& formula, const Caption_Facts& facts);
