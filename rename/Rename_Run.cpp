#include "rename/Rename_Run.h"

#include <map>
#include <set>
#include <unordered_map>

namespace {

std::string Folder_Of(const std::string& path)
{
    return path.substr(0, path.rfind('/') + 1);
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

/// Brings the files of a rename away from the names that were meant for an instant.
class Temporary_Names {
public:
    Temporary_Names(const std::vector<Rename_Step>& steps, Rename_Files& files) : files_(files)
    {
        for (const Rename_Step& step : steps) {
            if (Is_Temporary_Path(step.to)) back_[step.to] = step.from;
            if (Is_Temporary_Path(step.from)) onward_[step.from] = step.to;
        }
    }

    /// Back, or where the old name is taken by now or not known, on. Tells about those that did not come back.
    std::string Leave()
    {
        std::string told;
        for (const auto& [temporary, old_name] : back_) {
            if (!files_.Find(temporary) || files_.Rename(temporary, old_name)) continue;
            const bool went_on = onward_.count(temporary) > 0 && files_.Rename(temporary, onward_[temporary]);
            told += "; " + old_name + " is now " + (went_on ? onward_[temporary] : temporary);
        }
        for (const auto& [temporary, new_name] : onward_)
            if (back_.count(temporary) == 0 && files_.Find(temporary) && !files_.Rename(temporary, new_name))
                told += "; what was to be " + new_name + " is now " + temporary;
        return told;
    }

private:
    Rename_Files& files_;
    std::map<std::string, std::string> back_, onward_; // by the temporary name
};

} // namespace

Result<void> Run_Plan(const Rename_Plan& plan, Rename_Files& files, Rename_Journal& journal)
{
    if (!plan.Faults().empty()) return Failure(plan.Faults().front().Text());
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
    if (!done)
        return Failure("An interrupted rename could not be put right, for other programs changed the folder meanwhile" +
                       Leave_Temporary_Names(record, files));
    const std::string astray = Undo(record.steps, *done, files);
    if (!astray.empty()) return Failure("An interrupted rename could not be put right" + astray);
    return Flush_All(record.steps, files);
}

std::string Leave_Temporary_Names(const Rename_Record& part, Rename_Files& files)
{
    std::string told = Temporary_Names(part.steps, files).Leave();
    for (const Rename_Step& step : part.steps) {
        const bool is_temporary = Is_Temporary_Path(step.from) || Is_Temporary_Path(step.to);
        if (!is_temporary && files.Find(step.to) == std::optional(step.file))
            told += "; " + step.from + " is now " + step.to;
    }
    return told;
}

std::vector<Rename_Move> Moves_Back(const Rename_Record& record, const Rename_Files& files)
{
    std::vector<Rename_Move> back;
    for (const Rename_Move& move : record.moves)
        if (files.Find(move.folder + move.new_name)) back.push_back({move.folder, move.new_name, move.old_name});
    return back;
}
