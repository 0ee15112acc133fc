#pragma once

#include "evaluate/Keyword_Table.h"
#include "evaluate/Name_Index.h"
#include "evaluate/Token_Word.h"
#include "evaluate/variant/Variant.h"

#include <QtCore/QString>
#include <utility>
#include <vector>

namespace Formula {

/// What the compiler hands to the engine. Positions in the source and indices into the code, the arguments and the
/// statements count from 1; 0 is "none".

struct Code_Record {
    Token_Word Token = Token::None;
    Variant Operand = {}; ///< literal, name, label or count
    int Position = 0;     ///< in the source, for error reports
    int Label = -1;       ///< of a jump until its address is known: number in the label table
};

struct Argument_Record {
    QString Name = {};
    Argument_Item Flags = 0; ///< Required by value, Reference_Name, Optional, or Written_Default
    Variant Default = {};
};

namespace Variable_Flag {
enum : int { Static = 0x10000, Prompted = 0x20000 };
}

struct Variable_Cell {
    Variant Value;
    int Dimensions = 0; ///< 0 scalar; 1 array; the number of dimensions once ReDim has run
    int Flags = 0;
};

struct Variable_Record : Variable_Cell {
    QString Name;
    bool Is_Array = false; ///< by its declaration: what Dimensions tells when a run starts
    bool By_Host = false;  ///< supplied from outside and not yet declared by the program
};

/// Variables keep their place in the table as long as they live; the index finds them by name. Hosts see them in the
/// order of their names.
class Variable_Table {
public:
    std::vector<Variable_Record> rows;

    int Find(QStringView name) const; ///< -1 if unknown
    bool Has_Room() const;
    int Declare(const QString& name, int flags = 0); ///< a new variable; its row
    void Declare_Array(int row);
    void Start();         ///< of a run: all Empty, with the dimensions that were declared
    void Remove(int row); ///< later rows move up by one
    void Clear();
    int Row_In_Order(int ordinal) const; ///< the row of the 1-based ordinal by name; -1 out of range

private:
    Name_Index index_;
    mutable std::vector<int> order_; ///< built when somebody asks
};

/// Names and values, for constants and for what a host supplied.
class Value_Table {
public:
    std::vector<std::pair<QString, Variant>> rows;

    int Find(QStringView name) const; ///< -1 if unknown
    bool Has_Room() const;
    void Store(const QString& name, const Variant& value); ///< replaces the value of that name
    void Remove(QStringView name);
    void Clear();

private:
    Name_Index index_;
};

struct Procedure_Record {
    QString Name;
    Token_Word Visibility = Token::Public;
    Token_Word Kind = Token::Function;
    std::vector<Argument_Record> Arguments; ///< argument i stands at i - 1
    bool Defined = false;                   ///< a header was seen; else it is only called
    int Entry = -1;                         ///< code index; -1 until the definition is compiled
    int Exit = 0;
    Value_Table Constants;
    Variable_Table Variables;
};

struct Label_Record {
    QString Name;
    int Address = 0; ///< 0 until known
};

class Label_Table {
public:
    std::vector<Label_Record> rows;
    int Find(QStringView name) const { return index_.Find(name); }
    int Find_Or_Add(const QString& name);

private:
    Name_Index index_;
};

struct Statement_Record {
    int Position = 0;
    int Code = 0;
};

/// The error of a compile or of a run. Code 0 is none.
struct Evaluation_Error {
    int Code = 0;
    QString Description;
    int Position = 0;
};

struct Program_Code {
    static constexpr int Main = 0; ///< procedure 0 is always the main program

    Program_Code();
    int Find_Procedure(QStringView name) const { return procedure_index.Find(name); } ///< -1 if unknown
    int Find_Or_Add_Procedure(const QString& name);
    std::vector<int> Procedures_In_Order() const; ///< by name, without the main program
    int Code_Count() const { return int(code.size()) - 1; }

    std::vector<Code_Record> code; ///< code[0] is not used
    std::vector<Procedure_Record> procedures;
    Name_Index procedure_index;
    Label_Table labels;
    std::vector<Statement_Record> statements;
    int option_base = 0;
};

} // namespace Formula
