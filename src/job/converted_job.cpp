// A drawing's result as a text, and its way into the queue of what is to be placed. Relies on the queue and
// on steps that a conversion recorded; a result that does not fit leaves no trace in it.
#include "job/converted_job.h"

#include <charconv>
#include <cmath>
#include <system_error>
#include <utility>

#include "job/placing.h"
#include "platform/stand_ins.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr char FieldEnd = '\n';
constexpr double Nanoseconds = 1e9;

void PutTexts(FieldsText& fields, const std::vector<std::string>& texts)
{
    fields.PutNumber(static_cast<long long>(texts.size()));
    for (const std::string& text : texts)
        fields.Put(text);
}

std::vector<std::string> TakeTexts(FieldsReader& reader)
{
    std::vector<std::string> texts(reader.TakeCount());
    for (std::string& text : texts)
        text = reader.Take();
    return texts;
}

void PutRow(FieldsText& fields, const ReportRow& row)
{
    fields.Put(row.Text);
    fields.PutNumber(row.Red << 16 | row.Green << 8 | row.Blue);
    fields.PutNumber(row.Centred ? 1 : 0);
    fields.PutNumber(static_cast<long long>(row.Line.Number));
    fields.PutNumber(static_cast<long long>(row.Line.Values.size()));
    for (const MessageValue& value : row.Line.Values) {
        fields.Put(value.Name);
        fields.Put(value.Text);
        fields.PutNumber(value.IsWhole ? 1 : 0);
    }
}

bool IsWholeNumber(const std::string& text)
{
    long long number = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    return fault == std::errc() && end == text.data() + text.size();
}

MessageLine TakeLine(FieldsReader& reader)
{
    MessageLine line;
    const long long number = reader.TakeNumber();
    const MessagePage* const page = FindPage(number);
    reader.Ok = reader.Ok && (number == 0 || page != nullptr);
    if (page != nullptr)
        line.Number = page->Number;
    for (std::size_t left = reader.TakeCount(); left > 0; --left) {
        const std::string_view name = reader.Take();
        MessageValue value(name, reader.Take());
        value.IsWhole = reader.TakeNumber() != 0;
        reader.Ok = reader.Ok && (!value.IsWhole || IsWholeNumber(value.Text));
        line.Values.push_back(std::move(value));
    }
    return line;
}

ReportRow TakeRow(FieldsReader& reader)
{
    ReportRow row;
    row.Text = reader.Take();
    const auto colour = static_cast<unsigned long long>(reader.TakeNumber());
    row.Red = static_cast<unsigned char>(colour >> 16 & 0xFF);
    row.Green = static_cast<unsigned char>(colour >> 8 & 0xFF);
    row.Blue = static_cast<unsigned char>(colour & 0xFF);
    row.Centred = reader.TakeNumber() != 0;
    row.Line = TakeLine(reader);
    return row;
}

void PutStep(FieldsText& fields, const OutputStep& step)
{
    fields.PutNumber(static_cast<long long>(step.Kind));
    fields.Put(step.Folder);
    fields.Put(step.Path);
    fields.Put(step.Text);
    PutTexts(fields, step.Lines);
    fields.PutNumber(step.Metric ? 1 : 0);
}

OutputStep TakeStep(FieldsReader& reader)
{
    OutputStep step;
    const long long kind = reader.TakeNumber();
    reader.Ok = reader.Ok && kind >= 0 && kind < StepKinds;
    step.Kind = reader.Ok ? static_cast<StepKind>(kind) : StepKind::Name;
    step.Folder = reader.Take();
    step.Path = reader.Take();
    step.Text = reader.Take();
    step.Lines = TakeTexts(reader);
    step.Metric = reader.TakeNumber() != 0;
    return step;
}

} // namespace

void FieldsText::Put(std::string_view field)
{
    Text += std::to_string(field.size());
    Text += ' ';
    Text += field;
    Text += FieldEnd;
}

void FieldsText::PutNumber(long long number)
{
    Put(std::to_string(number));
}

std::string_view FieldsReader::Take()
{
    std::size_t length = 0;
    const std::from_chars_result read = std::from_chars(Rest.data(), Rest.data() + Rest.size(), length);
    const auto digits = static_cast<std::size_t>(read.ptr - Rest.data());
    // Behind the digits a blank, the field and its end.
    const bool plain = digits < 2 || Rest[0] != '0';
    Ok = Ok && read.ec == std::errc() && plain && digits < Rest.size() && Rest[digits] == ' ' &&
         length < Rest.size() - digits - 1 && Rest[digits + 1 + length] == FieldEnd;
    if (!Ok) {
        Rest = {};
        return {};
    }
    const std::string_view field = Rest.substr(digits + 1, length);
    Rest.remove_prefix(digits + length + 2);
    return field;
}

long long FieldsReader::TakeNumber()
{
    const std::string_view field = Take();
    long long number = 0;
    const std::from_chars_result read = std::from_chars(field.data(), field.data() + field.size(), number);
    Ok = Ok && read.ec == std::errc() && read.ptr == field.data() + field.size();
    return Ok ? number : 0;
}

std::size_t FieldsReader::TakeCount()
{
    constexpr std::size_t shortest = 3; // bytes of a field
    const long long count = TakeNumber();
    Ok = Ok && count >= 0 && static_cast<unsigned long long>(count) <= Rest.size() / shortest;
    return Ok ? static_cast<std::size_t>(count) : 0;
}

std::string ConvertedJobText(const ConvertedJob& job)
{
    FieldsText fields;
    fields.Put(job.Drawing);
    fields.Put(job.SourceFile);
    fields.Put(job.OutputName);
    fields.PutNumber(job.System);
    fields.PutNumber(static_cast<long long>(job.Source.Size));
    fields.PutNumber(static_cast<long long>(job.Source.Sum));
    fields.PutNumber(job.Failed ? 1 : 0);
    PutTexts(fields, job.FailedFiles);
    fields.PutNumber(static_cast<long long>(job.Rows.size()));
    for (const ReportRow& row : job.Rows)
        PutRow(fields, row);
    fields.PutNumber(static_cast<long long>(job.Counts.size()));
    for (const Long count : job.Counts)
        fields.PutNumber(count);
    fields.PutNumber(std::llround(job.Seconds * Nanoseconds));
    fields.PutNumber(static_cast<long long>(job.Steps.size()));
    for (const OutputStep& step : job.Steps)
        PutStep(fields, step);
    return std::move(fields.Text);
}

std::optional<ConvertedJob> ConvertedJobOf(std::string_view text)
{
    FieldsReader reader(text);
    ConvertedJob job;
    job.Drawing = reader.Take();
    static_cast<void>(PathFromUtf8(job.Drawing)); // its lines hold the stand-ins of such names
    job.SourceFile = reader.Take();
    job.OutputName = reader.Take();
    job.System = static_cast<Int>(reader.TakeNumber());
    job.Source.Size = static_cast<std::uint64_t>(reader.TakeNumber());
    job.Source.Sum = static_cast<std::uint64_t>(reader.TakeNumber());
    job.Failed = reader.TakeNumber() != 0;
    job.FailedFiles = TakeTexts(reader);
    for (std::size_t left = reader.TakeCount(); left > 0; --left)
        job.Rows.push_back(TakeRow(reader));
    for (std::size_t left = reader.TakeCount(); left > 0; --left)
        job.Counts.push_back(static_cast<Long>(reader.TakeNumber()));
    job.Seconds = static_cast<double>(reader.TakeNumber()) / Nanoseconds;
    for (std::size_t left = reader.TakeCount(); left > 0; --left)
        job.Steps.push_back(TakeStep(reader));
    if (!reader.Ok || !reader.AtEnd())
        return std::nullopt;
    return job;
}

namespace {

// A box of several rows repeats its line.
long long DoubtsIn(const std::vector<ReportRow>& rows)
{
    long long doubts = 0;
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (i == 0 || rows[i].Line.Number != rows[i - 1].Line.Number ||
            TextOf(rows[i].Line) != TextOf(rows[i - 1].Line))
            doubts += DoubtsOf(rows[i].Line);
    return doubts;
}

} // namespace

bool PlaceConvertedJob(const ConvertedJob& job)
{
    Run.RunState = 0;
    Run.SourceFile = Run.DrawingFile = job.SourceFile;
    Run.RunFailed = job.Failed ? True : False;
    BeginJobOutput();
    if (!RepeatSteps(job.Steps)) {
        TakeBackJobOutput();
        return false;
    }
    for (const ReportRow& row : job.Rows)
        if (Report.ShowRow != nullptr)
            Report.ShowRow(row);
    AddDoubts(DoubtsIn(job.Rows));
    for (const std::string& path : job.FailedFiles)
        AddFailedFile(path);
    FinishJobOutput(true);
    return true;
}

} // namespace kv
