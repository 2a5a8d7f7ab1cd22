#pragma once

#include <QString>
#include <QStringList>

// Takes out of the log what is the user's own affair.
class PrivateText {
public:
    struct Known {
        QString home;        // shown as "~"
        QStringList names;   // of files of the Library, with or without their folder: each becomes "<file>"
        QStringList secrets; // each becomes "<secret>"
    };

    explicit PrivateText(Known known);

    // Without what is known, and without anything that looks like the name of a file of captures, also of one
    // that isn't there any more.
    QString without(const QString &text) const;

private:
    Known m_known;
};
