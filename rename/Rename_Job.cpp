#include "rename/Rename_Job.h"

#include "evaluate/variant/Like.h"
#include "frame/text/Number_Text.h"
#include "frame/text/Path_Utilities.h"
#include "frame/text/Text_Utilities.h"

#include <QtCore/QHash>
#include <algorithm>
#include <limits>

namespace {

constexpr int No_Serial = -1;
constexpr int Longest_Name = 255;
constexpr int Serial_Limit = std::numeric_limits<int>::max(); // serials are below it

bool Is_Digit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// A run of digits; 0-based, empty when begin is end.
struct Digit_Run {
    qsizetype begin = 0, end = 0;
};

/// The last run of digits at or behind `first`; without one, an empty run at the end.
Digit_Run Last_Digit_Run(const QString& root, qsizetype first)
{
    qsizetype end = root.size();
    while (end > first && !Is_Digit(root[end - 1])) --end;
    if (end <= first) return {root.size(), root.size()};
    qsizetype begin = end;
    while (begin > first && Is_Digit(root[begin - 1])) --begin;
    return {begin, end};
}

int Serial_Of(const QString& digits)
{
    bool is_number = false;
    const qlonglong value = digits.toLongLong(&is_number);
    return is_number && value < Serial_Limit ? int(value) : No_Serial;
}

std::optional<std::int64_t> Number_Of(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (!Is_Signed_Whole_Number(trimmed)) return {};
    const auto number = Long_From_Text(trimmed);
    if (!number) return {};
    return *number;
}

int Text_Length(std::int64_t number)
{
    return int(QString::number(number).size());
}

/// What From covers at the beginning of a root.
struct From_Match {
    enum class Kind { None, Elsewhere, At_Begin } kind = Kind::None;
    qsizetype length = 0;
};

class From_Matcher {
public:
    explicit From_Matcher(const Rename_Inputs& inputs)
        : from_(inputs.pattern_mode ? inputs.change_from : Case_Folded(inputs.change_from)),
          pattern_mode_(inputs.pattern_mode)
    {}

    From_Match Match(const QString& root) const
    {
        if (from_.isEmpty()) return {};
        if (pattern_mode_) return Match_Pattern(root);
        const bool begins = Case_Folded(root.left(from_.size())) == from_;
        return begins ? From_Match{From_Match::Kind::At_Begin, from_.size()} : From_Match{};
    }

private:
    /// A pattern that is not closed fits nothing.
    From_Match Match_Pattern(const QString& root) const
    {
        using Formula::Compare_Mode;
        const auto place = Formula::First_Like(root, from_, 1);
        if (!place || place->begin == 0) return {};
        // The search answers with the shortest part that ends first. A run at the pattern's beginning reaches further
        // back: what counts is whether the whole beginning of the root, up to that end, fits.
        const auto beginning = QStringView(root).left(place->end);
        const bool at_begin =
            place->begin == 1 || Formula::Is_Like(beginning, from_, Compare_Mode::Text).value_or(false);
        return {at_begin ? From_Match::Kind::At_Begin : From_Match::Kind::Elsewhere, qsizetype(place->end)};
    }

    QString from_;
    bool pattern_mode_;
};

/// A run that begins a name is no serial: something must stand before it.
Digit_Run Serial_Digits(const QString& root, const From_Matcher& matcher, bool pattern_mode)
{
    if (!pattern_mode) {
        const Digit_Run run = Last_Digit_Run(root, 0);
        return run.begin > 0 ? run : Digit_Run{};
    }
    const From_Match match = matcher.Match(root);
    return match.kind == From_Match::Kind::At_Begin ? Last_Digit_Run(root, match.length) : Digit_Run{};
}

/// New names are no paths: of a text with folders in it, what stands behind them. "\" and ":" are ordinary characters.
QString Without_Path(const QString& text)
{
    return Name_Part(u'/' + text);
}

QString With_Point(const QString& extension)
{
    return extension.isEmpty() || extension.startsWith(u'.') ? extension : u'.' + extension;
}

} // namespace

QString Root_Of_Name(const QString& file_name)
{
    return Base_Name_Part(u'/' + file_name);
}

QString Extension_Of_Name(const QString& file_name)
{
    return Extension_Part(u'/' + file_name);
}

/// How serials are counted in one computation of all names.
struct Rename_Job::Serial_Plan {
    bool renumber = false;    ///< the present serials go on, moved by the offset
    bool reserialize = false; ///< the present serials are forgotten, and numbers handed out from `next` on
    std::int64_t offset = 0;
    std::int64_t next = 0;
    std::int64_t interval = 1;
    std::int64_t without = No_Serial; ///< for a file without a serial
    int width = 0;

    /// Of a file with these digits; below 0 the file is not numbered.
    std::int64_t Take(const QString& digits)
    {
        const int present = renumber ? Serial_Of(digits) : No_Serial;
        if (!reserialize) return present == No_Serial ? without : present + offset;
        const std::int64_t taken = next;
        next += interval;
        return taken;
    }
    bool Numbers() const { return renumber || reserialize; }
    QString Text(std::int64_t serial) const { return QString::number(serial).rightJustified(width, u'0'); }
};

Rename_Job::Rename_Job(Formula::Formula_Host_Services& host, std::vector<Rename_Row> rows)
    : host_(host), rows_(std::move(rows))
{
    for (const Rename_Row& row : rows_)
        names_.push_back({Root_Of_Name(row.file_name), Extension_Of_Name(row.file_name)});
    Find_Serial_Range();
}

void Rename_Job::Set_Inputs(Rename_Inputs inputs)
{
    range_is_stale_ |= inputs.change_from != inputs_.change_from || inputs.change_to != inputs_.change_to ||
                       inputs.pattern_mode != inputs_.pattern_mode;
    const bool check = inputs.formula != inputs_.formula || inputs.change_to != inputs_.change_to;
    inputs_ = std::move(inputs);
    if (check) fault_ = inputs_.formula ? Check_Rename_Formula(host_, *inputs_.formula) : std::nullopt;
    if (fault_) return;
    if (range_is_stale_) Find_Serial_Range();
    Update_Names();
}

void Rename_Job::Find_Serial_Range()
{
    range_is_stale_ = false;
    smallest_ = largest_ = No_Serial;
    inputs_.start_numbering.clear();
    const From_Matcher matcher(inputs_);
    for (const auto& [root, extension] : names_) {
        const Digit_Run run = Serial_Digits(root, matcher, inputs_.pattern_mode);
        const QString digits = root.mid(run.begin, run.end - run.begin);
        const int serial = Serial_Of(digits);
        if (serial == No_Serial) continue;
        largest_ = std::max(largest_, serial);
        // Without a pattern the last file's serial is the one that the user counts from.
        if (inputs_.pattern_mode && smallest_ != No_Serial && serial >= smallest_) continue;
        smallest_ = serial;
        inputs_.start_numbering = digits;
    }
}

Rename_Job::Serial_Plan Rename_Job::Plan_Serials() const
{
    Serial_Plan plan;
    const auto start = Number_Of(inputs_.start_numbering);
    plan.renumber = smallest_ >= 0 && start.has_value();
    // A file without a serial gets no formula, but for pattern mode, where it counts as number 0.
    if (inputs_.pattern_mode) plan.without = 0;
    if (plan.renumber) plan.offset = *start - smallest_;
    // Where no serial was found the width is 2, that of -1: formulas then see the serial 00.
    plan.width = std::max(Text_Length(largest_), Text_Length(largest_ + plan.offset));
    plan.reserialize = inputs_.reserialize && start;
    if (plan.reserialize) {
        plan.next = *start;
        plan.interval = Number_Of(inputs_.reserialize_interval).value_or(1);
        if (plan.next >= 0) plan.width = Text_Length(plan.next + (std::int64_t(rows_.size()) - 1) * plan.interval);
    }
    // What is typed widens even when it is no number: a formula may still number its files with 0. No file name is longer
    // than the limit.
    const int typed = int(std::min<qsizetype>(inputs_.start_numbering.trimmed().size(), Longest_Name));
    plan.width = std::max(plan.width, typed);
    return plan;
}

void Rename_Job::Update_Names()
{
    Serial_Plan plan = Plan_Serials();
    const From_Matcher matcher(inputs_);
    std::unique_ptr<Rename_Formula> formula;
    if (inputs_.formula) formula = std::make_unique<Rename_Formula>(host_, *inputs_.formula, inputs_.change_to);
    update_fault_ = formula ? formula->Compile_Fault() : std::nullopt;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        Rename_Row& row = rows_[i];
        const From_Match match = inputs_.change_to.isEmpty() ? From_Match{} : matcher.Match(names_[i].root);
        // A match behind the beginning leaves the name that the row had.
        if (match.kind == From_Match::Kind::Elsewhere) continue;
        row.new_name.clear();
        if (match.kind == From_Match::Kind::At_Begin)
            row.new_name = New_Name({row, names_[i], match.length}, plan, formula.get());
    }
}

QString Rename_Job::New_Name(const Matched_Row& matched, Serial_Plan& plan, Rename_Formula* formula) const
{
    const auto& [row, name, length] = matched;
    const QString& root = name.root;
    const Digit_Run run = Last_Digit_Run(root, length);
    const std::int64_t serial = plan.Take(root.mid(run.begin, run.end - run.begin));
    const QString extension = New_Extension(name);
    QString new_root;
    if (serial >= 0 && formula != nullptr)
        new_root = formula->New_Root({.folder = row.folder,
                                      .root = root,
                                      .extension = extension,
                                      .date = row.file_date,
                                      .horz_pixels = row.horz_pixels,
                                      .vert_pixels = row.vert_pixels,
                                      .serial = plan.Text(serial)});
    else if (serial >= 0 && plan.Numbers())
        new_root = inputs_.change_to + root.mid(length, run.begin - length) + plan.Text(serial) + root.mid(run.end);
    else
        new_root = inputs_.change_to + root.mid(length);
    new_root = Without_Path(new_root);
    return new_root.isEmpty() ? QString() : new_root + extension;
}

QString Rename_Job::New_Extension(const Name_Parts& name) const
{
    const QString type = Without_Path(inputs_.file_type.trimmed());
    return With_Point(type.isEmpty() ? name.extension : type);
}

void Rename_Job::Set_User_Name(std::size_t row, const QString& text)
{
    QString& user_name = rows_[row].user_name;
    user_name = Without_Path(text);
    const QString extension = New_Extension(names_[row]).mid(1);
    if (!user_name.isEmpty() && !extension.isEmpty())
        user_name = With_Default_Extension(u'/' + user_name, extension).mid(1);
}

std::int64_t Rename_Job::Duplicate_Count() const
{
    QHash<QString, std::int64_t> rows_by_name;
    std::int64_t pairs = 0;
    for (const Rename_Row& row : rows_) pairs += rows_by_name[Case_Folded(row.Final_Name())]++;
    return pairs;
}

QString Duplicates_Message(std::int64_t count)
{
    return QString::number(count) + QStringLiteral(" file name duplicates have been found.\n"
                                                   "The rename or copy/rename will fail for these files.\n"
                                                   "Select 'Renumber' option to eliminate duplication.");
}

Changed_Part Changed_Part_Of(const QString& old_name, const QString& new_name)
{
    const qsizetype shorter = std::min(old_name.size(), new_name.size());
    qsizetype begin = 0;
    while (begin < shorter && old_name[begin] == new_name[begin]) ++begin;
    qsizetype end = 0;
    while (end < shorter - begin && old_name[old_name.size() - 1 - end] == new_name[new_name.size() - 1 - end]) ++end;
    if (begin + end == new_name.size()) return {int(begin), 0}; // something was only taken away
    // A number changes as a whole: 09 to 10, not 0 to 1 and 9 to 0.
    while (begin > 0 && Is_Digit(new_name[begin - 1]) && Is_Digit(new_name[begin])) --begin;
    while (end > 0 && Is_Digit(new_name[new_name.size() - end]) && Is_Digit(new_name[new_name.size() - 1 - end])) --end;
    return {int(begin), int(new_name.size() - end - begin)};
}
