#pragma once

#include <QObject>
#include <QString>
#include <optional>

class Workspace;

// Whose picture it is: the application that the user had in front when a capture began. A capture that starts
// from this program's own windows is credited to the application that was in front before.
class SourceApplication : public QObject {
    Q_OBJECT
public:
    explicit SourceApplication(Workspace &workspace, QObject *parent = nullptr);

    std::optional<QString> name() const;

private:
    std::optional<QString> frontmost() const;

    Workspace &m_workspace;
    std::optional<QString> m_lastOther;
};
