#pragma once

#include "base/result.h"
#include "steps/guide_step.h"

#include <QObject>
#include <QStringList>
#include <optional>

class ClaudeClient;

// Lets Claude rewrite the captions of a guide, one after the other. What the user does to the guide meanwhile
// changes neither the pictures that are sent nor whose caption a reply becomes. Main thread only.
class CaptionWriter : public QObject {
    Q_OBJECT
public:
    explicit CaptionWriter(ClaudeClient &claude, QObject *parent = nullptr);

    // `captions` as they may leave the program, one a step. Nothing happens while it is at work.
    void write(const Guide &guide, const QStringList &captions);
    bool isAtWork() const { return m_next < m_guide.steps.size(); }
    // Which step it is at, from 1, and of how many.
    qsizetype number() const { return m_next + 1; }
    qsizetype total() const { return m_guide.steps.size(); }

Q_SIGNALS:
    // At the end, where captions stayed as they were: the first reason.
    void failed(const Error &error);
    void written(const QUuid &step, const QString &caption);
    // At another step, or at the end.
    void progressed();

private:
    void writeNext();
    void replied(const QUuid &step, const Result<QString> &reply);

    ClaudeClient &m_claude;
    Guide m_guide;
    QStringList m_captions;
    qsizetype m_next = 0;
    std::optional<Error> m_failure;
    QString m_lastReason;
    int m_sameReason = 0; // replies in a row that failed for it
};
