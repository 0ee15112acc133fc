#include "rename/Rename_Plan.h"

#include "frame/files/Folder_Recovery.h"
#include "frame/text/Text_Utilities.h"

#include <algorithm>
#include <unordered_map>

namespace {

constexpr std::size_t Nowhere = std::size_t(-1);
constexpr std::string_view Temporary_Beginning = ".rename-";
constexpr std::string_view Temporary_Ending = ".halvine";

std::string Quoted(const std::string& name)
{
    return '"' + name + '"';
}

/// Finds the faults of a list of moves that one set of checks can see: the names, and each other.
class Move_Checker {
public:
    Move_Checker(const Rename_Files& files, Folder_Rules_Cache& rules) : files_(files), rules_(rules) {}

    void Add_Fault(std::size_t move, const Rename_Move& of, const std::string& reason, bool taken = false)
    {
        faults.push_back({.move = move, .file = of.old_name, .reason = reason, .target_is_taken = taken});
    }
    bool Check_Name(std::size_t move, const Rename_Move& of, const std::string& target_folder)
    {
        if (!files_.Find(of.folder + of.old_name)) {
            Add_Fault(move, of, "there is no such file any more");
            return false;
        }
        const std::string fault = Name_Fault(of.new_name, rules_.Of(target_folder));
        if (!fault.empty()) Add_Fault(move, of, fault);
        return fault.empty();
    }
    /// False when another move has the target already.
    bool Check_Target(std::size_t move, const Rename_Move& of, const std::string& key)
    {
        const auto [first, is_new] = by_target_.emplace(key, of.old_name);
        if (is_new) return true;
        Add_Fault(move, of, Quoted(of.new_name) + " is the new name of " + first->second + " too");
        return false;
    }

    std::vector<Rename_Fault> faults;

private:
    const Rename_Files& files_;
    Folder_Rules_Cache& rules_;
    std::unordered_map<std::string, std::string> by_target_; // key to the old name of the first
};

std::string Taken_Text(const std::string& name)
{
    return "the name " + Quoted(name) + " is taken by another file";
}

} // namespace

const Rename_Files::Folder_Rules& Folder_Rules_Cache::Of(const std::string& folder)
{
    const auto found = rules_.find(folder);
    return found != rules_.end() ? found->second : rules_.emplace(folder, files_.Rules_Of(folder)).first->second;
}

std::string Name_Fault(const std::string& new_name, const Rename_Files::Folder_Rules& rules)
{
    if (new_name.empty()) return "the new name is empty";
    if (new_name == "." || new_name == ".." || new_name.find('/') != std::string::npos)
        return Quoted(new_name) + " would leave the folder";
    if (new_name.find('\0') != std::string::npos) return "the new name holds a zero byte";
    if (new_name.size() > std::size_t(rules.longest_name))
        return "the new name has " + std::to_string(new_name.size()) + " bytes; the folder takes " +
               std::to_string(rules.longest_name);
    if (const auto at = new_name.find_first_of(rules.refused_characters); at != std::string::npos)
        return Quoted(new_name) + " holds a character that the file system does not take: " +
               (new_name[at] < ' ' ? "a control character" : new_name.substr(at, 1));
    if (new_name.back() == '~' || Is_Hidden_Name_Of_Ours(new_name))
        return Quoted(new_name) + " is a name that saves keep their files under";
    if (Is_Temporary_Path(new_name)) return Quoted(new_name) + " is a name that renames keep for themselves";
    return {};
}

bool Is_Temporary_Path(const std::string& path)
{
    const std::string_view name = std::string_view(path).substr(path.rfind('/') + 1);
    return name.starts_with(Temporary_Beginning) && name.ends_with(Temporary_Ending);
}

std::string Name_Key(const std::string& path, const Rename_Files::Folder_Rules& rules)
{
    if (!rules.ignores_case) return path;
    return File_System_Bytes(Case_Folded(Path_From_Bytes(QByteArray::fromStdString(path))));
}

/// Who must go before whom. Every target stands once and every source stands once, so that the moves are chains and rings.
struct Rename_Plan::Ordering {
    const Rename_Files& files;
    Folder_Rules_Cache& rules;
    const std::vector<Rename_Move>& moves;
    const std::set<std::string>& given_up;
    std::vector<std::size_t> active{};                      // moves that change a name
    std::unordered_map<std::string, std::size_t> sources{}; // key to move
    std::vector<std::size_t> blockers{};                    // the move that frees the target; Nowhere when it is free
    std::vector<bool> ordered{};
    std::vector<Rename_Step> steps{};
    int temporary_names = 0;

    std::string Key(const Rename_Move& move, const std::string& name)
    {
        return Name_Key(move.folder + name, rules.Of(move.folder));
    }

    void Take(const std::vector<std::size_t>& indices, Move_Checker& checker)
    {
        for (const std::size_t i : indices) {
            const auto [first, is_new] = sources.emplace(Key(moves[i], moves[i].old_name), i);
            if (is_new)
                active.push_back(i);
            else
                checker.Add_Fault(i, moves[i], "stands in the list twice");
        }
    }

    void Check(Move_Checker& checker)
    {
        blockers.assign(moves.size(), Nowhere);
        for (const std::size_t i : active) {
            const Rename_Move& move = moves[i];
            if (!checker.Check_Name(i, move, move.folder)) continue;
            const std::string target = Key(move, move.new_name);
            if (!checker.Check_Target(i, move, target)) continue;
            if (const auto source = sources.find(target); source != sources.end())
                blockers[i] = source->second;
            else if (const std::string path = move.folder + move.new_name; files.Find(path) && !given_up.count(path))
                checker.Add_Fault(i, move, Taken_Text(move.new_name), true);
        }
    }

    void Step(const std::string& from, const std::string& to, Rename_Files::Entry file)
    {
        steps.push_back({from, to, file});
    }

    void Step(std::size_t i)
    {
        const Rename_Move& move = moves[i];
        const std::string from = move.folder + move.old_name;
        Step(from, move.folder + move.new_name, files.Find(from).value_or(Rename_Files::Entry{}));
    }

    /// One that is free.
    std::string Temporary_Path(const std::string& folder)
    {
        for (;;) {
            std::string path = folder;
            path.append(Temporary_Beginning).append(std::to_string(++temporary_names)).append(Temporary_Ending);
            if (!files.Find(path)) return path;
        }
    }

    void Order()
    {
        ordered.assign(moves.size(), false);
        for (const std::size_t first : active) {
            std::vector<std::size_t> row; // each waits for the next
            std::size_t at = first;
            for (; at != Nowhere && !ordered[at]; at = blockers[at]) {
                row.push_back(at);
                ordered[at] = true;
            }
            if (row.empty()) continue;
            if (at == first)
                Step_Ring(row);
            else
                for (std::size_t i = row.size(); i-- > 0;) Step(row[i]);
        }
    }

    void Step_Ring(const std::vector<std::size_t>& ring)
    {
        const Rename_Move& first = moves[ring.front()];
        const std::string from = first.folder + first.old_name;
        const auto file = files.Find(from).value_or(Rename_Files::Entry{});
        const std::string temporary = Temporary_Path(first.folder);
        Step(from, temporary, file);
        for (std::size_t i = ring.size(); i-- > 1;) Step(ring[i]);
        Step(temporary, first.folder + first.new_name, file);
    }
};

Rename_Plan::Rename_Plan(const Rename_Files& files, std::vector<Rename_Move> moves,
                         const std::set<std::string>& given_up)
    : moves_(std::move(moves))
{
    Folder_Rules_Cache rules(files);
    Move_Checker checker(files, rules);
    Ordering ordering{.files = files, .rules = rules, .moves = moves_, .given_up = given_up};
    std::vector<std::size_t> changing;
    for (std::size_t i = 0; i < moves_.size(); ++i)
        if (moves_[i].new_name != moves_[i].old_name) changing.push_back(i);
    ordering.Take(changing, checker);
    ordering.Check(checker);
    faults_ = std::move(checker.faults);
    std::stable_sort(faults_.begin(), faults_.end(), [](const auto& a, const auto& b) { return a.move < b.move; });
    if (!faults_.empty()) return;
    ordering.Order();
    steps_ = std::move(ordering.steps);
}

std::vector<Rename_Fault> Check_Copies(const Rename_Files& files, const std::vector<Rename_Move>& moves,
                                       const std::string& target_folder)
{
    Folder_Rules_Cache rules(files);
    Move_Checker checker(files, rules);
    for (std::size_t i = 0; i < moves.size(); ++i) {
        const Rename_Move& move = moves[i];
        if (!checker.Check_Name(i, move, target_folder)) continue;
        if (!checker.Check_Target(i, move, Name_Key(target_folder + move.new_name, rules.Of(target_folder)))) continue;
        if (files.Find(target_folder + move.new_name)) checker.Add_Fault(i, move, Taken_Text(move.new_name), true);
    }
    return std::move(checker.faults);
}
