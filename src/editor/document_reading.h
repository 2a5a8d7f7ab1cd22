#pragma once

#include "editor/editor_desk.h"
#include "editor/redaction.h"
#include "services/claude_client.h"

#include <QObject>

// What is read out of the picture: text, what should be covered, and what the language model says of it.
class DocumentReading : public QObject {
    Q_OBJECT
public:
    explicit DocumentReading(const EditorDesk &desk) : m_desk(desk) {}

    void grabText();
    // `area` in image pixels.
    void copyTextIn(const QRect &area);
    void redact(Redaction::Mode mode);
    void runAI(ClaudeClient::Action action);

private:
    // Of what a text was read.
    enum class Extent { Whole, Area };
    void copyRecognized(const QString &text, Extent extent);
    void finishAI(ClaudeClient::Action action, const QString &reply);

    EditorDesk m_desk;
};
