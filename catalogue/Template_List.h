#pragma once

#include <QtCore/QString>
#include <vector>

/// A custom page template as the lists of templates show it.
struct Template_Name {
    QString name;
    QString id; ///< stays whatever the name is
    bool operator==(const Template_Name&) const = default;
};

/// The custom templates while somebody deletes or renames them. Nothing counts until the dialog ends with OK. Rows from 1.
class Template_List {
public:
    explicit Template_List(std::vector<Template_Name> templates);

    int Count() const { return int(rows_.size()); }
    const Template_Name& Row(int row) const { return rows_[std::size_t(row - 1)].present; }

    // Deleting.
    bool Is_Marked(int row) const { return rows_[std::size_t(row - 1)].marked; }
    void Mark(int row, bool marked); ///< nothing without such a row
    bool Has_Marks() const;

    // Renaming.
    /// Takes the name without blanks at its ends. False, and nothing changed, when it is empty or another template has it,
    /// without regard to case.
    bool Rename(int row, const QString& name);
    bool Is_Changed() const; ///< something is marked or has another name

    std::vector<Template_Name> Result() const; ///< without the marked ones, with the new names, in their order

private:
    struct Entry {
        Template_Name present;
        QString first_name;
        bool marked = false;
    };
    bool Has(int row) const { return row >= 1 && row <= Count(); }
    std::vector<Entry> rows_;
};
