#pragma once

#include "rename/Rename_Formula.h"

#include <QtCore/QString>
#include <cstdint>
#include <memory>
#include <vector>

// The naming of a batch of pictures.
//
//     rows (facts of the files) ──┐
//     inputs (what is typed) ─────┤
//                                 ├─> formula checked with sample values ── fault? ──> nothing below is done
//                                 ├─> serial range: the digits that the names end in
//                                 ├─> serial arithmetic: offset, width, or numbers handed out anew
//                                 └─> a new name for each row ──> duplicates counted
//
// A name is "root.extension"; roots alone are matched and replaced. In prefix mode the text From stands at the beginning
// of a root; in pattern mode From is a pattern of the Like rule whose first match begins the root. What From covers
// becomes To; in what follows, the last run of digits is the serial. Names are compared without regard to case. A new name
// never holds a folder: what is typed or computed with one loses it.

/// What a job knows of one file.
struct Rename_Row {
    QString folder;    ///< with its trailing separator
    QString file_name; ///< with extension
    double file_date = 0;
    int horz_pixels = 0, vert_pixels = 0;
    QString new_name{};  ///< computed; empty: the rules do not fit this file
    QString user_name{}; ///< the user's own text, wins over new_name

    /// The name that the file will have.
    const QString& Final_Name() const
    {
        return !user_name.isEmpty() ? user_name : !new_name.isEmpty() ? new_name : file_name;
    }
};

/// What is typed and chosen.
struct Rename_Inputs {
    QString change_from;
    QString change_to;
    bool pattern_mode = false;
    std::optional<Chosen_Formula> formula{};
    QString file_type{};       ///< when not empty, the extension of all new names, with or without its "."
    QString start_numbering{}; ///< the first number; takes effect when it is a whole number
    bool reserialize = false;
    QString reserialize_interval{}; ///< 1 unless it is a whole number
    bool operator==(const Rename_Inputs&) const = default;
};

class Rename_Job {
public:
    /// Opens the job: finds the serial range in prefix mode. The host must outlive the job.
    Rename_Job(Formula::Formula_Host_Services& host, std::vector<Rename_Row> rows);

    const Rename_Inputs& Inputs() const { return inputs_; }
    /// Takes what is typed now and computes what depends on it. When From, To or the mode changed, the serial range is
    /// found again and writes its own start number into the inputs. While a formula has a fault, names and range stay.
    void Set_Inputs(Rename_Inputs inputs);

    const std::vector<Rename_Row>& Rows() const { return rows_; }
    /// The user's own name for a row (0-based). One without an extension gets that of the new names, unless it ends in
    /// "."; the empty text takes it back.
    void Set_User_Name(std::size_t row, const QString& text);

    /// What the check with sample values found.
    const std::optional<Formula_Fault>& Fault() const { return fault_; }

    /// Computes all names from the inputs as they stand, whatever the check says. A formula that cannot be compiled here
    /// gives no names; why is the update fault, which the user is to be warned about once.
    void Update_Names();
    const std::optional<Formula_Fault>& Update_Fault() const { return update_fault_; }

    /// -1 until found. The smallest is that of the last file in prefix mode, the true smallest in pattern mode.
    int Smallest_Serial() const { return smallest_; }
    int Largest_Serial() const { return largest_; }
    bool Start_Numbering_Enabled() const { return smallest_ >= 0; }

    /// Pairs of rows with equal final names.
    std::int64_t Duplicate_Count() const;

private:
    struct Serial_Plan;
    struct Name_Parts {
        QString root, extension; ///< of the present name
    };
    struct Matched_Row {
        const Rename_Row& row;
        const Name_Parts& name;
        qsizetype length; ///< what From covers of the root
    };
    void Find_Serial_Range();
    Serial_Plan Plan_Serials() const;
    QString New_Name(const Matched_Row& matched, Serial_Plan& plan, Rename_Formula* formula) const;
    QString New_Extension(const Name_Parts& name) const; ///< with its "."

    Formula::Formula_Host_Services& host_;
    std::vector<Rename_Row> rows_;
    std::vector<Name_Parts> names_; // of the rows
    Rename_Inputs inputs_;
    std::optional<Formula_Fault> fault_, update_fault_;
    bool range_is_stale_ = false;
    int smallest_ = -1;
    int largest_ = -1;
};

/// Shown when the dialog is accepted with duplicates.
inline const QString Duplicates_Title = QStringLiteral("File name collisions");
QString Duplicates_Message(std::int64_t count);

/// The stretch of `new_name` that is not in `old_name`: what stands between their common beginning and end, without cutting
/// through a number. 0-based.
struct Changed_Part {
    int start = 0, length = 0;
    bool operator==(const Changed_Part&) const = default;
};
Changed_Part Changed_Part_Of(const QString& old_name, const QString& new_name);

/// Root and extension of a bare file name, in which "\" and ":" are ordinary characters.
QString Root_Of_Name(const QString& file_name);
QString Extension_Of_Name(const QString& file_name); ///< without its "."
