#pragma once

#include "evaluate/Program_Code.h"
#include "evaluate/library/Library.h"
#include "frame/ports/Platform.h"

#include <optional>
#include <span>

namespace Formula {

/// Who wrote a formula decides what it may read. There are three kinds:
///
///     from a file   A formula of the lists of rename and of file data formulas, of an album, of a template. It sees the
///                   facts that it is handed and the clock, until the user allows more: Formula_Consent::Allowed_Access.
///     typed         What the user types while the program runs. It may use all but dialogs, since it is evaluated at
///                   every key and for every row: Typed_Access. Once it is put into a list under a name it is kept with
///                   Formula_Consent::Remember_Typed, for from then on a list cannot tell it from the first kind.
///     hv            Nobody is asked. A formula from a file or a list may use what --allow-formula lists, one from the
///                   command line at least Typed_Access; hv eval lets it use dialogs too, which open no window there.
///
/// A host sets AllowedAccess of bkcEvaluate to one of these; what is refused raises 70, "Permission denied", at its place.
inline constexpr unsigned File_Access = unsigned(Access_Class::Pure) | unsigned(Access_Class::Clock);
inline constexpr unsigned Typed_Access = All_Access & ~unsigned(Access_Class::Dialog);

/// What can be allowed to a formula from a file. Dialogs cannot: one box for each row of a list would lock the user out.
inline constexpr unsigned Grantable_Access = Typed_Access & ~File_Access;

/// What a compiled formula would touch if every instruction of it ran: bits of Access_Class, Pure always among them. The
/// question for an unknown variable does not count; PromptUninitialized is the host's.
unsigned Access_Used(const Program_Code& code);

/// The same of an expression; Pure alone of a text that is none, for it never runs.
unsigned Access_Used(const QString& text);

/// The words files, environment, settings, parted by commas and in any case, as bits of Access_Class. Nothing for a list
/// with another word in it.
std::optional<unsigned> Access_From_List(const QString& list);

/// A formula and the name that it has in its list.
struct Named_Formula {
    QString name;
    QString text;
};

/// What the user allowed to formulas that came from files. The answers stand in the settings under a digest of name and
/// text, so that a formula that was changed or renamed elsewhere is a new one. A "no" is not remembered: opening the file
/// again asks again. Both arguments must outlive the object, which holds no state of its own: any number may live.
class Formula_Consent {
public:
    Formula_Consent(User_Dialogs& dialogs, Settings_Map& settings) : dialogs_(dialogs), settings_(settings) {}

    /// For AllowedAccess of the evaluator that runs the formula: File_Access and what was allowed. Never asks.
    unsigned Allowed_Access(const QString& name, const QString& text) const;

    /// True when the formula uses more than was allowed and could be allowed it, so that Ask_About would ask.
    bool Needs_Question(const QString& name, const QString& text) const;

    /// For whoever opens a file with formulas: asks once for each formula that needs it, with Yes, No, Cancel and No as
    /// default, and remembers each Yes. False on Cancel: no more is asked, and the file is not to be taken. A Yes before
    /// it stays.
    bool Ask_About(std::span<const Named_Formula> formulas);

    /// For whoever lets the user type a formula into a list: allows what a typed formula may use, without a question. Only
    /// for a row that the user wrote or changed; one that merely stood in the list is still the file's. 0, or the error of
    /// the settings: then the formula works as one from a file.
    int Remember_Typed(const QString& name, const QString& text);

private:
    unsigned Missing_Access(const QString& name, const QString& text) const;
    int Remember(const QString& name, const QString& text, unsigned access);

    User_Dialogs& dialogs_;
    Settings_Map& settings_;
};

} // namespace Formula
