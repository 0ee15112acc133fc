#pragma once

#include "rename/Rename_Files.h"

#include <map>
#include <set>
#include <string>
#include <vector>

// A rename of many files, checked as a whole before anything is touched.
//
//     moves ──> checked together: any fault, and nothing is done
//           ──> ordered: c becomes d before b becomes c; a ring begins by way of a temporary name
//           ──> steps ──> journal "begun" ──> carried out one by one ──> journal "done"
//                                                   └── a step fails: those before it are undone, last first
//
// No step ever replaces a file: a name that was free when the plan was checked and is taken now fails the step.

/// Names are bytes; a folder ends with "/".
struct Rename_Move {
    std::string folder;
    std::string old_name;
    std::string new_name;
    bool operator==(const Rename_Move&) const = default;
};

struct Rename_Fault {
    std::size_t move = 0;         ///< 0-based place of the move
    std::string file{};           ///< its old name
    std::string reason{};         ///< "the name "trip.jpg" is taken by another file"
    bool target_is_taken = false; ///< by a file that is there and stays: a person may decide about it
    std::string Text() const { return file + ": " + reason; }
};

struct Rename_Step {
    std::string from, to; ///< paths
    Rename_Files::Entry file;
    bool operator==(const Rename_Step&) const = default;
};

class Rename_Plan {
public:
    /// A plan in which files change their names within their folders. Moves that keep the name are passed over.
    /// given_up    paths that count as free: the files there will be gone when the plan runs
    Rename_Plan(const Rename_Files& files, std::vector<Rename_Move> moves, const std::set<std::string>& given_up = {});

    const std::vector<Rename_Move>& Moves() const { return moves_; }
    const std::vector<Rename_Fault>& Faults() const { return faults_; } ///< in the order of the moves
    const std::vector<Rename_Step>& Steps() const { return steps_; }    ///< empty with a fault

private:
    struct Ordering;
    std::vector<Rename_Move> moves_;
    std::vector<Rename_Fault> faults_;
    std::vector<Rename_Step> steps_;
};

/// Faults of copies of the files under their new names in one folder, found before anything is copied.
std::vector<Rename_Fault> Check_Copies(const Rename_Files& files, const std::vector<Rename_Move>& moves,
                                       const std::string& target_folder);

/// Why a folder cannot hold the name, in words that follow the name of the file; empty when it can.
std::string Name_Fault(const std::string& new_name, const Rename_Files::Folder_Rules& rules);

/// The names by way of which files go round in rings: hidden, and told apart from those under which saves keep files.
bool Is_Temporary_Path(const std::string& path);

/// What equals when two names are one file in the folder.
std::string Name_Key(const std::string& path, const Rename_Files::Folder_Rules& rules);

/// The rules of folders, asked for once each.
class Folder_Rules_Cache {
public:
    explicit Folder_Rules_Cache(const Rename_Files& files) : files_(files) {}
    const Rename_Files::Folder_Rules& Of(const std::string& folder);

private:
    const Rename_Files& files_;
    std::map<std::string, Rename_Files::Folder_Rules> rules_;
};
