#include "catalogue/Work_Journal.h"

#include "frame/text/Path_Utilities.h"
#include "frame/text/Text_Utilities.h"

namespace {

constexpr std::int64_t Least_Growth_Before_Rewrite = 256 << 10;

Kept_Picture Picture_To_Keep(const Picture_Item& item)
{
    Kept_Picture picture{.key = item.Picture_Key,
                         .file = item.Full_Name(),
                         .rotate = item.Rotate,
                         .flip = item.Flip,
                         .seconds = item.Interval_In_Seconds,
                         .inode = item.Identity.inode,
                         .size = item.Identity.size,
                         .modified_nanoseconds = item.Identity.modified_nanoseconds};
    if (item.Script_Modified) picture.script = Join_Script_Items(item.Script_Items);
    if (item.Description_Modified) picture.description = item.Description;
    return picture;
}

bool Is_File_Of(const QString& path, const Picture_Item& item)
{
    return path.size() == item.Path.size() + item.File_Name.size() && path.startsWith(item.Path) &&
           path.endsWith(item.File_Name);
}

/// Whether this is what Picture_To_Keep would give, without making it: nothing has changed most of the time.
bool Is_Kept(const Picture_Item& item, const Kept_Picture& kept)
{
    return kept.key == item.Picture_Key && kept.rotate == item.Rotate && kept.flip == item.Flip &&
           kept.seconds == item.Interval_In_Seconds && kept.inode == item.Identity.inode &&
           kept.size == item.Identity.size && kept.modified_nanoseconds == item.Identity.modified_nanoseconds &&
           kept.script.has_value() == item.Script_Modified &&
           kept.description.has_value() == item.Description_Modified && Is_File_Of(kept.file, item) &&
           (!kept.script || *kept.script == Join_Script_Items(item.Script_Items)) &&
           (!kept.description || *kept.description == item.Description);
}

} // namespace

Work_Journal::Work_Journal(const Catalogue_State& state, QString folder) : state_(state), folder_(std::move(folder)) {}

void Work_Journal::Start()
{
    timer_ = state_.platform.make_timer([this] { Write_Changes(); });
    timer_->Start(Milliseconds_Between_Looks);
}

bool Work_Journal::Is_All_Written() const
{
    if (written_.size() != std::size_t(state_.pictures.Count())) return false;
    for (int index = 1; index <= state_.pictures.Count(); ++index)
        if (!Is_Kept(state_.pictures.Item(index), written_[std::size_t(index) - 1])) return false;
    return true;
}

/// The lines that bring the file up to date; written_ holds the new state afterwards. Both lists are in the order of keys.
QByteArray Work_Journal::Changes()
{
    if (Is_All_Written()) return {};
    QByteArray lines;
    std::vector<Kept_Picture> present;
    present.reserve(std::size_t(state_.pictures.Count()));
    auto before = written_.cbegin();
    for (int index = 1; index <= state_.pictures.Count(); ++index) {
        Kept_Picture now = Picture_To_Keep(state_.pictures.Item(index));
        for (; before != written_.cend() && before->key < now.key; ++before)
            lines += Journal_Line_Of_Dropped(before->key);
        const bool is_known = before != written_.cend() && before->key == now.key;
        if (!is_known || *before != now) lines += Journal_Line(now);
        if (is_known) ++before;
        present.push_back(std::move(now));
    }
    for (; before != written_.cend(); ++before) lines += Journal_Line_Of_Dropped(before->key);
    written_ = std::move(present);
    return lines;
}

QByteArray Work_Journal::Whole_Text() const
{
    QByteArray text = Journal_Head();
    for (const Kept_Picture& picture : written_) text += Journal_Line(picture);
    return text;
}

Result<void> Work_Journal::Keep()
{
    last_look_ = state_.platform.clock.Now().toMSecsSinceEpoch();
    const QByteArray changes = Changes();
    if (changes.isEmpty() && !must_rewrite_) return {};
    auto written = Write(changes);
    must_rewrite_ = !written;
    return written;
}

void Work_Journal::Keep_If_Due()
{
    const qint64 now = state_.platform.clock.Now().toMSecsSinceEpoch();
    if (std::abs(now - last_look_) >= Milliseconds_Between_Looks) Keep_Now(); // a clock may be set back
}

bool Work_Journal::Write_Changes()
{
    const auto written = Keep();
    if (written) return true;
    if (failure_told_) return false;
    failure_told_ = true;
    state_.platform.dialogs.Refuse(QStringLiteral("Work that is not saved can't be kept safe from a crash.\r\n") +
                                   QString::fromStdString(written.error().text));
    return false;
}

Result<void> Work_Journal::Write(const QByteArray& changes)
{
    if (!file_) {
        auto made = Journal_File::Create(File_System_Bytes(folder_));
        if (!made) return tl::make_unexpected(made.error());
        file_ = std::move(*made);
        must_rewrite_ = true;
    }
    // A file that doubled says most things twice.
    const bool has_grown =
        file_->Size() - size_when_rewritten_ > std::max(Least_Growth_Before_Rewrite, size_when_rewritten_);
    if (!must_rewrite_ && !has_grown) return file_->Append({changes.constData(), std::size_t(changes.size())});
    const QByteArray text = Whole_Text();
    auto written = file_->Rewrite({text.constData(), std::size_t(text.size())});
    if (written) size_when_rewritten_ = text.size();
    return written;
}

void Work_Journal::Remove()
{
    timer_.reset();
    if (file_) file_->Remove();
    file_.reset();
    written_.clear();
}
