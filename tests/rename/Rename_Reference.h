#pragma once

#include "rename/Rename_Job.h"

/// The naming rules once more, one step after the other as a person would do them with pencil and paper: slow, plain, with
/// its own searches. Formulas are left out: a job with one is compared through `with_formula`.
struct Reference_Result {
    QStringList names;
    QString start_numbering; ///< as it stands when nothing is typed
    int smallest = -1, largest = -1;
};

using Reference_Formula = std::function<QString(const Rename_Row&, const QString& serial)>;

/// `typed_start` takes the place of the start number that the range gives, when there is a value.
/// `with_formula` gets the text of the serial and gives the new root; it is asked only where a formula counts.
Reference_Result Reference_Names(const std::vector<Rename_Row>& rows, const Rename_Inputs& inputs,
                                 const std::optional<QString>& typed_start, const Reference_Formula& with_formula);
