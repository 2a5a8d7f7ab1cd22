#pragma once

#include <QObject>
#include <QString>
#include <optional>

// What the window of a film knows beside the film itself: the part that plays and is exported, the one that
// is being chosen, and what is under way. The film's file is never changed.
class VideoEditorModel : public QObject {
    Q_OBJECT
public:
    // In seconds from the film's beginning.
    struct Part {
        double from = 0;
        double to = 0;
        bool operator==(const Part &) const = default;
        double length() const { return to - from; }
    };
    enum class Edge { From, To };
    // The least that is left between both edges.
    static constexpr double kShortest = 1.0 / 30;

    using QObject::QObject;

    // Before it is known there is no part.
    void setDuration(double seconds);
    double duration() const { return m_duration; }
    bool isReady() const { return m_duration > 0; }

    // What plays and what exports make.
    const Part &part() const { return m_part; }
    // Whether it is less than the film.
    bool isTrimmed() const { return m_part != whole(); }

    bool isTrimming() const { return m_draft.has_value(); }
    // The part that the handles show: while trimming the one that is being chosen.
    const Part &shownPart() const { return m_draft ? *m_draft : m_part; }
    void beginTrim();
    // Stops at the film's ends and short of the other edge.
    void moveEdge(Edge edge, double seconds);
    void confirmTrim();
    void cancelTrim();

    // The words for what is under way; empty when nothing is.
    const QString &busy() const { return m_busy; }
    void setBusy(const QString &words);

Q_SIGNALS:
    void changed();

private:
    Part whole() const { return {0, m_duration}; }

    double m_duration = 0;
    Part m_part;
    std::optional<Part> m_draft;
    QString m_busy;
};
