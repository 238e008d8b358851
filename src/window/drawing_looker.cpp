// Question and answer travel as one line of text each, since a stream of this system may change bytes.
#include "window/drawing_looker.h"

#include <cstdio>
#include <utility>
#include <vector>

#include <QCoreApplication>
#include <QDataStream>
#include <QFile>
#include <QIODevice>

#include "platform/paths.h"
#include "platform/terminal.h"
#include "state/settings.h"
#include "window/controls.h"

namespace kv {

namespace {

constexpr int WaitFor = 120;        // ms
constexpr int LongestLook = 60'000; // ms

void Put(QDataStream& stream, const std::string& text)
{
    stream << QByteArray::fromStdString(text);
}

std::string TakeText(QDataStream& stream)
{
    QByteArray text;
    stream >> text;
    return text.toStdString();
}

void Put(QDataStream& stream, const PathPoint& point)
{
    stream << point.X << point.Y;
}

void Take(QDataStream& stream, PathPoint& point)
{
    stream >> point.X >> point.Y;
}

void Put(QDataStream& stream, std::size_t number)
{
    stream << static_cast<quint64>(number);
}

std::size_t TakeNumber(QDataStream& stream)
{
    quint64 number = 0;
    stream >> number;
    return static_cast<std::size_t>(number);
}

// Of a list: a stream that ends early ends the list too.
template <class T, class PutOne>
void PutAll(QDataStream& stream, const std::vector<T>& all, const PutOne& putOne)
{
    Put(stream, all.size());
    for (const T& one : all)
        putOne(one);
}

template <class T, class TakeOne>
void TakeAll(QDataStream& stream, std::vector<T>& all, const TakeOne& takeOne)
{
    for (std::size_t left = TakeNumber(stream); left > 0 && stream.status() == QDataStream::Ok; --left)
        takeOne(all.emplace_back());
}

void PutShape(QDataStream& stream, const DrawnShape& shape)
{
    PutAll(stream, shape.Way, [&](const Move& move) {
        stream << move.IsArc << move.Sweep;
        Put(stream, move.From);
        Put(stream, move.To);
        Put(stream, move.Centre);
    });
    stream << shape.IsLeft;
    Put(stream, shape.Text);
    Put(stream, shape.Line);
}

void TakeShape(QDataStream& stream, DrawnShape& shape)
{
    TakeAll(stream, shape.Way, [&](Move& move) {
        stream >> move.IsArc >> move.Sweep;
        Take(stream, move.From);
        Take(stream, move.To);
        Take(stream, move.Centre);
    });
    stream >> shape.IsLeft;
    shape.Text = TakeText(stream);
    shape.Line = TakeNumber(stream);
}

void PutOrigins(QDataStream& stream, const DrawingOrigins& origins)
{
    PutAll(stream, origins.Entities, [&](const OriginEntity& entity) {
        Put(stream, entity.Line);
        Put(stream, entity.What);
        Put(stream, entity.Handle);
    });
    PutAll(stream, origins.Programs, [&](const ProgramOrigins& program) {
        Put(stream, program.Path);
        stream << static_cast<qint32>(program.BackEdge);
        PutAll(stream, program.Lines, [&](const LineOrigin& line) { stream << line.Line << line.Entity; });
    });
}

void TakeOrigins(QDataStream& stream, DrawingOrigins& origins)
{
    TakeAll(stream, origins.Entities, [&](OriginEntity& entity) {
        entity.Line = TakeNumber(stream);
        entity.What = TakeText(stream);
        entity.Handle = TakeText(stream);
    });
    TakeAll(stream, origins.Programs, [&](ProgramOrigins& program) {
        program.Path = TakeText(stream);
        qint32 edge = 0;
        stream >> edge;
        program.BackEdge = static_cast<Plane>(edge);
        TakeAll(stream, program.Lines, [&](LineOrigin& line) { stream >> line.Line >> line.Entity; });
    });
}

QByteArray LineOf(const DrawingLook& look)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    Put(stream, look.Fault);
    stream << look.Length << look.Width << look.Thickness << look.From.Right << look.From.Top;
    PutAll(stream, look.Drawn, [&](const DrawnShape& shape) { PutShape(stream, shape); });
    PutAll(stream, look.Programs, [&](const ProgramNow& program) {
        Put(stream, program.Path);
        Put(stream, program.Text);
    });
    PutOrigins(stream, look.Origins);
    Put(stream, look.Explanation);
    return bytes.toBase64();
}

// False: it is no answer.
bool LookOfLine(const QByteArray& line, DrawingLook& look)
{
    const QByteArray bytes = QByteArray::fromBase64(line.trimmed());
    QDataStream stream(bytes);
    look.Fault = TakeText(stream);
    stream >> look.Length >> look.Width >> look.Thickness >> look.From.Right >> look.From.Top;
    TakeAll(stream, look.Drawn, [&](DrawnShape& shape) { TakeShape(stream, shape); });
    TakeAll(stream, look.Programs, [&](ProgramNow& program) {
        program.Path = TakeText(stream);
        program.Text = TakeText(stream);
    });
    TakeOrigins(stream, look.Origins);
    look.Explanation = TakeText(stream);
    return !bytes.isEmpty() && stream.status() == QDataStream::Ok;
}

QByteArray QuestionAbout(const std::string& drawing)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    Put(stream, ExeFolder);
    Put(stream, drawing);
    stream << static_cast<qint32>(SelectedSystem());
    PutAll(stream, SettingsOfPrograms(), [&](const SettingText& setting) {
        Put(stream, setting.Key);
        Put(stream, setting.Value);
    });
    return bytes.toBase64() + '\n';
}

} // namespace

DrawingLooker::DrawingLooker() : Program(QCoreApplication::applicationFilePath())
{
    Wait.setSingleShot(true);
    Wait.setInterval(WaitFor);
    connect(&Wait, &QTimer::timeout, this, [this] { Start(); });
    Patience.setSingleShot(true);
    Patience.setInterval(LongestLook);
    connect(&Patience, &QTimer::timeout, this, [this] {
        Fail(QStringLiteral("it could not be looked at within %1 seconds").arg(LongestLook / 1000));
    });
}

DrawingLooker::~DrawingLooker()
{
    Forget();
}

void DrawingLooker::Look(const std::string& drawing)
{
    Forget();
    Drawing = drawing;
    Wait.start();
}

void DrawingLooker::Forget()
{
    Wait.stop();
    Patience.stop();
    if (!Looking)
        return;
    Looking->disconnect(this);
    Looking->kill();
    Looking->waitForFinished(1000);
    Looking.release()->deleteLater(); // it may be what calls
}

void DrawingLooker::Start()
{
    Looking = std::make_unique<QProcess>();
    connect(Looking.get(), &QProcess::finished, this, [this] { TakeAnswer(); });
    connect(Looking.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            Fail(Looking->errorString());
    });
    Looking->setStandardErrorFile(QProcess::nullDevice());
    Patience.start();
    Looking->start(Program, {QStringLiteral("--look")});
    if (!Looking)
        return; // it has failed already
    Looking->write(QuestionAbout(Drawing));
    Looking->closeWriteChannel();
}

void DrawingLooker::TakeAnswer()
{
    DrawingLook look;
    const QByteArray answer = Looking->readAllStandardOutput();
    Forget();
    if (!LookOfLine(answer, look)) {
        look = {};
        look.Fault = "it could not be looked at";
    }
    if (Done)
        Done(Drawing, look);
}

void DrawingLooker::Fail(const QString& why)
{
    Forget();
    DrawingLook look;
    look.Fault = Ansi(why);
    if (Done)
        Done(Drawing, look);
}

int AnswerLook()
{
    QFile input, output;
    if (!input.open(stdin, QIODevice::ReadOnly) || !output.open(stdout, QIODevice::WriteOnly))
        return 1;
    const QByteArray question = QByteArray::fromBase64(input.readLine().trimmed());
    QDataStream stream(question);
    SetExeFolder(TakeText(stream));
    const std::string drawing = TakeText(stream);
    qint32 system = 0;
    stream >> system;
    std::vector<SettingText> settings;
    TakeAll(stream, settings, [&](SettingText& setting) {
        setting.Key = TakeText(stream);
        setting.Value = TakeText(stream);
    });
    if (question.isEmpty() || stream.status() != QDataStream::Ok)
        return 1;
    LoadAllSettings();
    for (const SettingText& setting : settings)
        static_cast<void>(OverrideSetting(setting.Key, setting.Value)); // names of files beside them are none
    Config.CarryOver = "clean";
    Config.Check = "no"; // its lines would be nobody's
    return output.write(LineOf(LookAtDrawing(drawing, static_cast<Int>(system)))) > 0 ? 0 : 1;
}

} // namespace kv
