#pragma once

#include "evaluate/Program_Code.h"
#include "evaluate/Scanner.h"

#include <initializer_list>
#include <span>
#include <vector>

namespace Formula {

/// Turns a source text into a flat array of postfix code records in one pass (a program has its procedure headers
/// collected in a pass before, so that calls may precede definitions). There is no tree: operands are emitted as they
/// come, operators wait on the operator stack until one of lower or equal precedence, or a flush, pops them.
///
/// In all routines the current token is the one being looked at; a routine that compiles something begins on its first
/// token. Those for operands end on their last token, those for statements behind it. A routine that returns false has
/// reported why, and its callers return at once.
class Compiler {
public:
    /// The code gets procedures, labels and statements as they come; it must be fresh. What a host supplied is declared
    /// in the main program already.
    Compiler(Program_Code& code, const QString& source);

    bool Compile_Program();
    bool Compile_Single_Expression();
    const Evaluation_Error& Error() const { return error_; }

private:
    struct Waiting_Operator {
        Token_Word token;
        int count;
        int position;
    };
    enum class Operand { Taken, None, Failed };
    enum class Block_Kind { One_Line, Block };
    class Nesting;

    // Tokens
    bool Next_Token();
    Token_Word Peek();
    bool Expect_Next();
    bool Require(Token_Word wanted, const char* message);
    bool Take(Token_Word wanted, const char* message); ///< the wanted one, and whatever token follows it
    bool Take(const char* message) { return Take(token_.word, message); }
    bool Advance_To(Token_Word wanted, const char* message);
    bool Advance_To_Name(const char* message);
    bool At(std::initializer_list<Token_Word> words) const;
    bool At_Line_End() const { return At({Token::End_Of_Line, Token::End_Of_Source}); }
    void Skip_Line_Ends();

    // Output
    bool Explained(bool good);
    bool Report_Error(int code, const QString& text, int position);
    bool Syntax_Error(const char* text) { return Report_Error(1, QString::fromLatin1(text), token_.start); }
    void Emit(Token_Word token, const Variant& operand, int position);
    void Emit(Token_Word token, const Variant& operand) { Emit(token, operand, token_.start); }
    void Emit_Long(int number);
    void Emit_Jump(Token_Word token, int label, int position);
    void Emit_Jump(Token_Word token, int label) { Emit_Jump(token, label, token_.start); }
    void Push_Operator(Token_Word token, int count, int position);
    void Pop_Operator();
    void Flush_Operators(Token_Word until);
    void Record_Statement(int position);
    int Next_Address() const { return int(code_.code.size()); }
    int New_Label(int number);
    int New_Label() { return New_Label(int(code_.labels.rows.size()) + 1); }
    void Define_Label(int label);
    void Resolve_Jumps();
    int Declare(Variable_Table& variables, const QString& name); ///< its row; -1, with a report, when there is no room
    bool Declare_If_Unknown(const QString& name);
    bool Declare_Array_If_Unknown(const QString& name); ///< a known variable becomes an array
    Variable_Table& Main_Variables() { return code_.procedures[Program_Code::Main].Variables; }
    Procedure_Record& Current() { return code_.procedures[std::size_t(current_)]; }
    bool Is_Variable(QStringView name);
    const Variant* Find_Constant(QStringView name);

    // Expressions
    bool Compile_Expression(Token_Word stop1, Token_Word stop2);
    bool Compile_Value(Token_Word stop1, Token_Word stop2); ///< an expression, flushed
    bool Compile_Bracketed(Token_Word stop1, Token_Word stop2);
    bool Expression_Ends(Token_Word stop1, Token_Word stop2) const;
    Operand Compile_Operand(Token_Word stop1, Token_Word stop2);
    bool Compile_Name();
    bool Compile_Element_Read();
    bool Compile_Indices(int& count);
    bool Compile_Builtin(Token_Word function, std::span<const Argument_Item> descriptor);
    bool Compile_Arguments(std::span<const Argument_Item> descriptor, int& count);
    bool Compile_Argument_List(std::span<const Argument_Item> descriptor, int& count);
    bool Compile_Argument(Argument_Item item);
    bool Check_Argument_Count(std::span<const Argument_Item> descriptor, int& count);
    bool Compile_Call();
    std::vector<Argument_Item> Procedure_Descriptor(int procedure) const;
    bool Compile_Parenthesis();
    bool Compile_Tessary();
    bool Compile_Tessary_Item();
    bool Compile_Brennick();

    // Programs
    bool Collect_Headers();
    bool Compile_Statements_Of_Program();
    bool Compile_Value_Formula();
    bool Compile_Header(int& procedure);
    bool Compile_Header_Argument(int procedure, bool& optional_seen);
    bool Compile_Argument_Default(Argument_Record& argument);
    bool Compile_Procedure();
    bool Compile_Procedure_End(Token_Word kind);

    // Statements
    bool Compile_Statement();
    bool Dispatch_Statement();
    bool Dispatch_Keyword();
    bool Compile_Statements_Until(std::initializer_list<Token_Word> stops, Block_Kind kind = Block_Kind::Block);
    bool Compile_Name_Statement();
    bool Compile_Call_Statement();
    bool Compile_Assignment();
    bool Compile_Array_Assignment(const QString& name, int position);
    bool Compile_Element_Assignment();
    bool Compile_Return_Value();
    bool Compile_Mid(Token_Word store);
    bool Compile_Label();
    bool Compile_Go_To();
    bool Compile_Const();
    bool Compile_Dim(int flags);
    bool Compile_Re_Dim();
    bool Compile_Bounds(int& dimensions);
    bool Compile_Erase();
    bool Compile_Option();
    bool Compile_Randomize();
    bool Compile_Exit();
    bool Compile_Visibility();
    bool Compile_If();
    bool Compile_Branch(int end_label, Block_Kind& kind, bool first);
    bool Compile_Else(Block_Kind kind);
    bool Compile_While();
    bool Compile_Do();
    bool Compile_Do_Condition(Token_Word jump_on_while, Token_Word jump_on_until, int label, bool& found);
    bool Compile_For();
    bool Compile_For_Head();

    Program_Code& code_;
    Scanner scanner_;
    Scanned_Token token_;
    std::vector<Waiting_Operator> operators_;
    int current_ = Program_Code::Main;
    int nesting_ = 0;
    Evaluation_Error error_;
    bool peeked_ = false; ///< next_ and next_position_ hold the token behind the current one
    Scanned_Token next_;
    int next_position_ = 1;
};

/// One level of parentheses, or of statements inside a statement. Too many end the compile, since each takes room on the
/// machine's own stack.
class Compiler::Nesting {
public:
    explicit Nesting(Compiler& compiler) : compiler_(compiler) { ++compiler_.nesting_; }
    ~Nesting() { --compiler_.nesting_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    bool Too_Deep();

private:
    Compiler& compiler_;
};

} // namespace Formula
