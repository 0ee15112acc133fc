#pragma once

#include "catalogue/Catalogue_State.h"
#include "catalogue/Journal_Text.h"
#include "frame/files/Journal_File.h"

#include <optional>

/// Keeps what the user did and did not save yet where a crash cannot take it: the list of pictures and their scripts,
/// descriptions, rotations, flips and slide times. Half a second after a change, at most, it stands on the disk; during a
/// long command at the next picture after that.
class Work_Journal : public Work_Keeper {
public:
    static constexpr int Milliseconds_Between_Looks = 500;

    /// `folder` is where journals stand; nothing is made there before the first picture is picked.
    Work_Journal(const Catalogue_State& state, QString folder);

    void Start(); ///< looks for changes from now on
    /// Writes what changed since the last call and flushes it. The first failure of a run is told. False after a failure.
    bool Write_Changes();
    void Remove(); ///< the program ends as it should: nothing is left to keep

    // Work_Keeper. A failure is told by the next look that fails as well.
    void Keep_Now() override { (void)Keep(); }
    void Keep_If_Due() override;

private:
    Result<void> Keep();
    bool Is_All_Written() const;
    QByteArray Changes();
    Result<void> Write(const QByteArray& changes);
    QByteArray Whole_Text() const;

    const Catalogue_State& state_;
    QString folder_;
    std::unique_ptr<Repeating_Timer> timer_;
    std::optional<Journal_File> file_;
    std::vector<Kept_Picture> written_; // what the file says, by growing keys
    std::int64_t size_when_rewritten_ = 0;
    qint64 last_look_ = 0;      // milliseconds
    bool must_rewrite_ = false; // the file may not end where it should
    bool failure_told_ = false;
};
