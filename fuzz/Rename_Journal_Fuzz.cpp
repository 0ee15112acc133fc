// The reader of the journal of a rename, and what puts an interrupted rename right. What is read can be written and reads
// back the same; whatever a journal claims, how much of it is left and wherever the rename stopped, no file is lost.
// Each input is read as it is, which hardly ever is whole, and as lines whose check words are put behind them here.

#include "tests/rename/Files_In_Memory.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr std::size_t Most_Steps = 64; // one journal is played once for each

void Require(bool holds)
{
    if (!holds) std::abort();
}

/// The disk that the steps start from, where it can be made out: each file stands where its first step takes it from.
Files_In_Memory Disk_Before(const Rename_Record& record, bool ignores_case)
{
    Files_In_Memory disk;
    disk.ignores_case = ignores_case;
    for (std::size_t i = record.steps.size(); i-- > 0;)
        disk.Put(record.steps[i].from, int(record.steps[i].file.inode % 1000) + 1);
    return disk;
}

std::vector<int> Files_On(const Files_In_Memory& disk)
{
    std::vector<int> files;
    for (const auto& [path, file] : disk.All()) files.push_back(file);
    std::sort(files.begin(), files.end());
    return files;
}

void Play(const Record_Reading& reading)
{
    const Rename_Record& record = reading.record;
    Require(Record_From_Text(Text_Of_Record(record)).record == record);
    for (const bool ignores_case : {false, true}) {
        Files_In_Memory disk = Disk_Before(record, ignores_case);
        const std::vector<int> files = Files_On(disk);
        for (std::size_t done = 0; done <= std::min(record.steps.size(), Most_Steps); ++done) {
            Files_In_Memory stopped = disk;
            if (reading.Is_Whole())
                (void)Put_Right(record, stopped);
            else
                (void)Leave_Temporary_Names(record, stopped);
            Require(Files_On(stopped) == files);
            if (done < record.steps.size()) (void)disk.Rename(record.steps[done].from, record.steps[done].to);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(data), qsizetype(size));
    Play(Record_From_Text(text));
    QList<QByteArray> lines = text.split('\n');
    if (lines.back().isEmpty()) lines.removeLast();
    Play(Record_From_Text(Checked_Lines(lines)));
    return 0;
}
