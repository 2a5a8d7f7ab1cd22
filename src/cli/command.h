#pragma once

#include "base/result.h"

#include <CLI/App.hpp>
#include <QFuture>
#include <QJsonDocument>
#include <QString>
#include <functional>
#include <memory>
#include <string>

struct Platform;
class AppSettings;
class CaptureSettings;
class Library;
class NoticeBoard;

// Exit statuses of every command.
enum class ExitStatus {
    Done = 0,
    Failed = 1,       // one sentence on standard error said why
    WrongCall = 2,    // the words of the call are wrong
    NothingFound = 3, // done, but nothing was found
};

// A translated text, as the parser takes it.
inline std::string help(const QString &text)
{
    return text.toStdString();
}

// Which kind of application object a body needs; it is made just before the body runs.
enum class Needs {
    Core,    // no pictures of text, no clipboard: starts fastest
    Fonts,   // draws text, without any display
    Display, // the clipboard or windows of a real display
};

// What a command works with. Everything heavy is made at its first use, so that a command pays only for what
// it needs: no display is opened for one that touches no screen.
class CommandContext {
public:
    CommandContext(int argc, char **argv);
    ~CommandContext();

    // So that the help of the commands, which is told while the call is read, is in the user's language.
    void speakUsersLanguage();
    // Called by setBody just before the body.
    void startApplication(Needs needs);

    Platform &platform();
    AppSettings &settings();
    CaptureSettings &captureSettings();
    Library &library();
    NoticeBoard &notices();

    QString libraryFolder; // of --library; empty for the one in the settings
    ExitStatus status = ExitStatus::Done;

    // Results go to standard output, one line each.
    static void print(const QString &line);
    static void print(const QJsonDocument &document);
    // Messages go to standard error, a sentence a line. The first two also set `status`.
    // A failure tells whole paths: its sentence may only have the name of `path`, or of the path in its
    // detail.
    void fail(const Error &error, const QString &path = {});
    void wrongCall(const QString &sentence);
    static void warn(const QString &sentence);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

// Gives `command` its body, run once after parsing.
void setBody(CLI::App *command, CommandContext &context, Needs needs, std::function<void()> body);

// A path as the shell understands it, whatever bytes its name has; see FileName.
QString absolutePath(const std::string &word);

// What a slow operation gave; a request that was given up is a cancelled error.
template <typename T>
Result<T> waitFor(QFuture<Result<T>> future)
{
    future.waitForFinished();
    if (future.resultCount() == 0)
        return cancelled();
    return future.takeResult();
}

// One function a group of commands; each lies in the file of its group.
void addCaptureCommands(CLI::App &app, CommandContext &context);
void addClipboardCommand(CLI::App &app, CommandContext &context);   // for the program itself
void addDiagnosticsCommand(CLI::App &app, CommandContext &context); // diagnostics
void addLibraryCommands(CLI::App &app, CommandContext &context);
void addExportCommands(CLI::App &app, CommandContext &context); // export, pdf, combine, guide-image
// favorite, collection, versions, restore, duplicates, autodelete
void addLibraryUpkeepCommands(CLI::App &library, CommandContext &context);
void addLibraryDataCommands(CLI::App &library, CommandContext &context); // index, backup
void addScrollingCommands(CLI::App &app, CommandContext &context);   // scroll, stitch
void addRenderCommand(CLI::App &app, CommandContext &context);       // render
void addRecognitionCommands(CLI::App &app, CommandContext &context); // text, boxes, faces, redact
void addOnlineCommands(CLI::App &app, CommandContext &context);      // describe, upload
void addRecordingCommands(CLI::App &app, CommandContext &context);   // record, gif, mp4
