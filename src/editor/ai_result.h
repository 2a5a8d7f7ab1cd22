#pragma once

#include <QString>
#include <QUuid>

// A text from the online service, waiting to be shown.
struct AIResult {
    QUuid id = QUuid::createUuid();
    QString title; // of the action
    QString text;

    bool operator==(const AIResult &) const = default;
};
