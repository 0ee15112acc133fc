#include "rename/Rename_Run.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace {

const QByteArray First_Line = QByteArrayLiteral("names");
const QByteArray Last_Line = QByteArrayLiteral("end");

std::string Folder_Of(const std::string& path)
{
    return path.substr(0, path.rfind('/') + 1);
}

QByteArray Coded(const std::string& bytes)
{
    return QByteArray::fromStdString(bytes).toPercentEncoding();
}

std::string Decoded(const QByteArray& text)
{
    return QByteArray::fromPercentEncoding(text).toStdString();
}

std::optional<std::uint64_t> Whole_Number(const QByteArray& text)
{
    bool is_number = false;
    const qulonglong number = text.toULongLong(&is_number);
    if (!is_number) return {};
    return number;
}

/// Nothing when a line is damaged.
std::optional<Rename_Step> Step_Of(const QList<QByteArray>& words)
{
    const auto device = Whole_Number(words[3]);
    const auto inode = Whole_Number(words[4]);
    if (!device || !inode) return {};
    return Rename_Step{Decoded(words[1]), Decoded(words[2]), {*device, *inode}};
}

/// Undoes the first `count` steps, the last one first. Texts of those that could not be undone.
std::string Undo(const std::vector<Rename_Step>& steps, std::size_t count, Rename_Files& files)
{
    std::string astray;
    for (std::size_t i = count; i-- > 0;)
        if (const auto undone = files.Rename(steps[i].to, steps[i].from); !undone)
            astray += "; " + steps[i].from + " is now " + steps[i].to;
    return astray;
}

Result<void> Flush_All(const std::vector<Rename_Step>& steps, Rename_Files& files)
{
    std::set<std::string> folders;
    for (const Rename_Step& step : steps) folders.insert(Folder_Of(step.to));
    for (const std::string& folder : folders)
        if (auto flushed = files.Flush(folder); !flushed) return flushed;
    return {};
}

/// The steps up to the first that fails; `done` counts them.
Result<void> Do_Steps(const std::vector<Rename_Step>& steps, Rename_Files& files, std::size_t& done)
{
    for (; done < steps.size(); ++done)
        if (auto renamed = files.Rename(steps[done].from, steps[done].to); !renamed) return renamed;
    return Flush_All(steps, files);
}

/// Looks at all names of a rename once and plays the steps through, to find how many of them were done.
class Step_Player {
public:
    Step_Player(const Rename_Record& record, const Rename_Files& files) : record_(record), rules_(files)
    {
        for (const Rename_Step& step : record.steps)
            for (const std::string& path : {step.from, step.to}) actual_.emplace(Key(path), files.Find(path));
        // Before the first step each file stands where its first step takes it from.
        std::set<std::string> written;
        for (const Rename_Step& step : record.steps) {
            const std::string from = Key(step.from);
            if (written.count(from) == 0 && start_.count(from) == 0) start_[from] = step.file;
            written.insert(Key(step.to));
        }
    }

    /// `exactly`: the very files are looked for, not only whether there are any. Where several numbers fit exactly, the
    /// steps between them changed the case of names alone, and the largest has them changed back. Otherwise the
    /// smallest does least.
    std::optional<std::size_t> Steps_Done(bool exactly) const
    {
        std::optional<std::size_t> found;
        auto expected = start_;
        const auto fits = [&](const std::string& key) {
            const auto& is = actual_.at(key);
            const auto should = expected.find(key);
            if (is.has_value() != (should != expected.end())) return false;
            return !exactly || !is || *is == should->second;
        };
        std::size_t wrong = 0;
        for (const auto& [key, is] : actual_) wrong += fits(key) ? 0 : 1;
        for (std::size_t done = 0;; ++done) {
            if (wrong == 0) found = done;
            if ((found && !exactly) || done == record_.steps.size()) return found;
            const std::string from = Key(record_.steps[done].from);
            const std::string to = Key(record_.steps[done].to);
            wrong -= (fits(from) ? 0 : 1) + (fits(to) ? 0 : 1);
            expected.erase(from);
            expected[to] = record_.steps[done].file;
            wrong += (fits(from) ? 0 : 1) + (fits(to) ? 0 : 1);
        }
    }

private:
    std::string Key(const std::string& path) const { return Name_Key(path, rules_.Of(Folder_Of(path))); }

    const Rename_Record& record_;
    mutable Folder_Rules_Cache rules_;
    std::unordered_map<std::string, std::optional<Rename_Files::Entry>> actual_;
    std::unordered_map<std::string, Rename_Files::Entry> start_;
};

/// A name that a later step takes the file away from.
bool Is_Temporary(const std::vector<Rename_Step>& steps, std::size_t step)
{
    return std::any_of(steps.begin() + std::ptrdiff_t(step) + 1, steps.end(),
                       [&](const Rename_Step& later) { return later.from == steps[step].to; });
}

/// The second best: nobody keeps a name that was meant for an instant.
Result<void> Undo_Temporary_Names(const std::vector<Rename_Step>& steps, Rename_Files& files)
{
    std::string text = "An interrupted rename could not be put right, for other programs changed the folder meanwhile";
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const Rename_Step& step = steps[i];
        if (files.Find(step.to) != std::optional(step.file)) continue;
        if (!Is_Temporary(steps, i) || !files.Rename(step.to, step.from))
            text += "; " + step.from + " is now " + step.to;
    }
    return Failure(text);
}

} // namespace

QByteArray Text_Of_Record(const Rename_Record& record)
{
    QByteArray text = First_Line + '\n';
    for (const Rename_Move& move : record.moves)
        text += "move " + Coded(move.folder) + ' ' + Coded(move.old_name) + ' ' + Coded(move.new_name) + '\n';
    for (const Rename_Step& step : record.steps)
        text += "step " + Coded(step.from) + ' ' + Coded(step.to) + ' ' +
                QByteArray::number(quint64(step.file.device)) + ' ' + QByteArray::number(quint64(step.file.inode)) +
                '\n';
    return text + Last_Line + '\n';
}

std::optional<Rename_Record> Record_From_Text(const QByteArray& text)
{
    QList<QByteArray> lines = text.split('\n');
    if (lines.size() < 3 || lines.front() != First_Line || lines[lines.size() - 2] != Last_Line) return {};
    Rename_Record record;
    for (const QByteArray& line : lines.mid(1, lines.size() - 3)) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() == 4 && words[0] == "move")
            record.moves.push_back({Decoded(words[1]), Decoded(words[2]), Decoded(words[3])});
        else if (const auto step = words.size() == 5 && words[0] == "step" ? Step_Of(words) : std::nullopt)
            record.steps.push_back(*step);
        else
            return {};
    }
    return record;
}

Result<void> Run_Plan(const Rename_Plan& plan, Rename_Files& files, Rename_Journal& journal)
{
    if (!plan.Faults().empty()) return Failure(plan.Faults().front().text);
    if (plan.Steps().empty()) return {};
    Rename_Record record{.moves = plan.Moves(), .steps = plan.Steps()};
    std::erase_if(record.moves, [](const Rename_Move& move) { return move.old_name == move.new_name; });
    if (auto begun = journal.Begin(record); !begun) return begun;

    std::size_t done = 0;
    auto outcome = Do_Steps(plan.Steps(), files, done);
    if (outcome) outcome = journal.Finish();
    if (outcome) return outcome;
    const std::string astray = Undo(plan.Steps(), done, files);
    if (!astray.empty()) return Failure(outcome.error().text + astray, outcome.error().number);
    journal.Forget();
    return Failure(outcome.error().text + "; no file was renamed", outcome.error().number);
}

Result<void> Put_Right(const Rename_Record& record, Rename_Files& files)
{
    const Step_Player player(record, files);
    auto done = player.Steps_Done(true);
    // Some file systems number their files anew each time that they are mounted.
    if (!done) done = player.Steps_Done(false);
    if (!done) return Undo_Temporary_Names(record.steps, files);
    const std::string astray = Undo(record.steps, *done, files);
    if (!astray.empty()) return Failure("An interrupted rename could not be put right" + astray);
    return Flush_All(record.steps, files);
}

std::vector<Rename_Move> Moves_Back(const Rename_Record& record, const Rename_Files& files)
{
    std::vector<Rename_Move> back;
    for (const Rename_Move& move : record.moves)
        if (files.Find(move.folder + move.new_name)) back.push_back({move.folder, move.new_name, move.old_name});
    return back;
}
