#include "rename/Rename_Record.h"

#include <QtCore/QCryptographicHash>

namespace {

const QByteArray First_Line = QByteArrayLiteral("names");
const QByteArray Last_Line = QByteArrayLiteral("end");
constexpr int Check_Length = 8; // hexadecimal digits

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

QByteArray Check_Word(qsizetype number, const QByteArray& line)
{
    const QByteArray covered = QByteArray::number(number) + ' ' + line;
    return QCryptographicHash::hash(covered, QCryptographicHash::Sha1).toHex().left(Check_Length);
}

/// The line without its check word; nothing when the word is not that of the line.
std::optional<QByteArray> Checked(qsizetype number, const QByteArray& line)
{
    const qsizetype bare = line.size() - Check_Length - 1;
    if (bare < 0 || line[bare] != ' ') return {};
    QByteArray text = line.left(bare);
    if (line.right(Check_Length) != Check_Word(number, text)) return {};
    return text;
}

/// False when it is neither a move nor a step.
bool Take_Line(const QByteArray& line, Rename_Record& record)
{
    const QList<QByteArray> words = line.split(' ');
    if (words.size() == 4 && words[0] == "move") {
        record.moves.push_back({Decoded(words[1]), Decoded(words[2]), Decoded(words[3])});
        return true;
    }
    if (words.size() != 5 || words[0] != "step") return false;
    const auto device = Whole_Number(words[3]);
    const auto inode = Whole_Number(words[4]);
    if (device && inode) record.steps.push_back({Decoded(words[1]), Decoded(words[2]), {*device, *inode}});
    return device && inode;
}

} // namespace

QByteArray Checked_Lines(const QList<QByteArray>& lines)
{
    QByteArray text;
    for (qsizetype i = 0; i < lines.size(); ++i) text += lines[i] + ' ' + Check_Word(i + 1, lines[i]) + '\n';
    return text;
}

QByteArray Text_Of_Record(const Rename_Record& record)
{
    QList<QByteArray> lines{First_Line};
    for (const Rename_Move& move : record.moves)
        lines << "move " + Coded(move.folder) + ' ' + Coded(move.old_name) + ' ' + Coded(move.new_name);
    for (const Rename_Step& step : record.steps)
        lines << "step " + Coded(step.from) + ' ' + Coded(step.to) + ' ' +
                     QByteArray::number(quint64(step.file.device)) + ' ' + QByteArray::number(quint64(step.file.inode));
    return Checked_Lines(lines << Last_Line);
}

Record_Reading Record_From_Text(const QByteArray& text)
{
    Record_Reading reading;
    const auto fault = [&](qsizetype number, const char* what) {
        if (reading.fault.empty()) reading.fault = "line " + std::to_string(number) + what;
    };
    const QList<QByteArray> lines = text.split('\n'); // behind the last line end there is nothing
    bool has_ended = false;
    for (qsizetype i = 0; i + 1 < lines.size(); ++i) {
        const auto line = Checked(i + 1, lines[i]);
        const bool is_first = i == 0 && line == First_Line;
        const bool is_last = i > 0 && line == Last_Line;
        if (has_ended || !line || !(is_first || is_last || (i > 0 && Take_Line(*line, reading.record))))
            fault(i + 1, " was changed");
        has_ended = has_ended || is_last;
    }
    if (!has_ended || !lines.back().isEmpty()) fault(lines.size(), " breaks off");
    return reading;
}
