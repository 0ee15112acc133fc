#pragma once

#include "rename/Rename_Run.h"

#include <map>
#include <stdexcept>

/// A disk of names for tests: what stands under a path is a number. It can refuse calls and be switched off in the middle.
class Files_In_Memory final : public Rename_Files {
public:
    struct Switched_Off : std::runtime_error {
        Switched_Off() : std::runtime_error("switched off") {}
    };

    bool ignores_case = false;
    int fails_at = -1; ///< the number of the call, from 1, that fails; -1 none
    bool fails_from_then_on = false;
    int switched_off_at = -1; ///< the number of the call at which the machine stops
    int calls = 0;
    bool refuse_flush = false;

    void Put(const std::string& path, int file) { files_[Key(path)] = {path, file}; }
    int At(const std::string& path) const ///< 0: nothing
    {
        const auto found = files_.find(Key(path));
        return found == files_.end() ? 0 : found->second.second;
    }
    /// Path to file, paths spelled as they are on the disk.
    std::map<std::string, int> All() const
    {
        std::map<std::string, int> all;
        for (const auto& [key, file] : files_) all[file.first] = file.second;
        return all;
    }

    std::optional<Entry> Find(const std::string& path) const override
    {
        const int file = At(path);
        if (file == 0) return {};
        return Entry{1, std::uint64_t(file)};
    }
    Result<void> Rename(const std::string& from, const std::string& to) override
    {
        if (++calls == switched_off_at) throw Switched_Off();
        if (calls == fails_at || (fails_from_then_on && fails_at > 0 && calls > fails_at))
            return Failure(from + ": the disk has had enough");
        const auto source = files_.find(Key(from));
        if (source == files_.end()) return Failure(from + ": is not there");
        if (files_.count(Key(to)) > 0) return Failure(to + ": is there");
        const int file = source->second.second;
        files_.erase(source);
        Put(to, file);
        return {};
    }
    Result<void> Flush(const std::string& folder) override
    {
        if (refuse_flush) return Failure(folder + ": cannot be flushed");
        return {};
    }
    Folder_Rules Rules_Of(const std::string&) const override
    {
        return {.longest_name = 40, .ignores_case = ignores_case, .refused_characters = "?"};
    }

private:
    std::string Key(const std::string& path) const
    {
        return Name_Key(path, {.longest_name = 40, .ignores_case = ignores_case, .refused_characters = {}});
    }
    std::map<std::string, std::pair<std::string, int>> files_;
};

class Journal_In_Memory final : public Rename_Journal {
public:
    Result<void> Begin(const Rename_Record& new_record) override
    {
        if (refuse_begin) return Failure("the journal cannot be written");
        record = Record_From_Text(Text_Of_Record(new_record)).record; // as it would come from a disk
        done = false;
        return {};
    }
    Result<void> Finish() override
    {
        if (refuse_finish) return Failure("the journal cannot be finished");
        done = true;
        return {};
    }
    void Forget() override { record.reset(); }

    std::optional<Rename_Record> record;
    bool done = false;
    bool refuse_begin = false;
    bool refuse_finish = false;
};
