#pragma once

#include "evaluate/library/Library.h"

#include <map>
#include <string>
#include <vector>

/// Calls built-ins and operators from short texts, without the compiler and the engine, so that a failing row points at
/// the library.
///
///     call    := value [ operator value ]      value := literal | name "(" values ")" | "(" call ")" | "Not" value
///     literal := 12 | -12 | 1.5 | "text" | #1/2/2003# | True | False | Null | Empty | a named constant | a variable
///
/// A bare variable name is passed by reference to a built-in that wants one; "@name" is its value. Array(...) makes a list
/// from 0, Neg(x) is the unary minus. "let name = call" sets a variable.
class Direct_Call : public Formula::Variable_Access, public Formula::Formula_Host_Services {
public:
    Direct_Call();

    /// The shown result: "text" in quotes, True, #date#, Null, Empty, [a, b], the type's name and the number for all
    /// other numbers, "error 13" for a failure.
    std::string Shown(const std::string& call);
    /// The result as CStr has it.
    std::string Text(const std::string& call);
    std::optional<Formula::Error_Number> Last_Error() const { return error_; }

    Formula::Library_Context context;
    std::map<QString, Formula::Variable_View> views;
    std::map<QString, Formula::Variant> variables;
    QStringList questions; ///< what the dialogs were asked
    int beeps = 0;

    Formula::Evaluated<Formula::Variable_View> Find_Variable(const Formula::Variant& reference) override;
    QDateTime Now() override { return QDateTime(QDate(2004, 2, 29), QTime(13, 4, 5, 500)); }
    QString Input_Box(const Formula::Host_Input_Question& question) override;
    int Message_Box(const Formula::Host_Message& message) override;
    void Beep() override { ++beeps; }
    QString Environment_Value(const QString& name) override;
    QString Current_Folder(const QString& drive) override;
    std::optional<std::vector<Formula::Host_File_Facts>> Folder_Entries(const QString& folder) override;
    std::optional<Formula::Host_File_Facts> File_Facts(const QString& path) override;
    std::optional<QString> Setting(const QString& application, const QString& section, const QString& key) override;
    std::vector<std::pair<QString, QString>> All_Settings(const QString& application, const QString& section) override;

private:
    class Reader;
    std::optional<Formula::Error_Number> error_;
};

/// A row of a table of cases: "name: call => result". Lines that begin with "'" and empty lines are passed over.
struct Call_Row {
    std::string name, call, result;
    int line = 0;
};
std::vector<Call_Row> Call_Rows(const std::string& path);
void Expect_Call_Rows(const std::string& path, std::size_t least_rows);
