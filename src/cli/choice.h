#pragma once

#include <CLI/CLI.hpp>
#include <QStringList>
#include <string>
#include <utility>
#include <vector>

// For an option that takes one of a few words: turns the word into the enum's number, or says which there
// are.
template <typename Enum>
CLI::Validator oneOf(std::vector<std::pair<std::string, Enum>> choices)
{
    CLI::Validator validator("");
    validator.operation([choices = std::move(choices)](std::string &word) {
        QStringList words;
        for (const auto &[name, value] : choices) {
            words.append(QString::fromStdString(name));
            if (words.last().compare(QString::fromStdString(word), Qt::CaseInsensitive) == 0) {
                word = std::to_string(static_cast<int>(value));
                return std::string();
            }
        }
        const QString last = words.takeLast();
        return "\"" + word + "\" is not " + (words.join(", ") + " or " + last).toStdString();
    });
    return validator;
}
