#include "cli/reference.h"

#include <CLI/CLI.hpp>
#include <QStringList>
#include <functional>

namespace Reference {

namespace {

QString text(const std::string &words)
{
    return QString::fromStdString(words);
}

// Without the help, which every command has.
QList<const CLI::Option *> ownOptions(const CLI::App &app)
{
    QList<const CLI::Option *> options;
    for (const CLI::Option *option : app.get_options()) {
        const bool isHelp = option == app.get_help_ptr() || option == app.get_help_all_ptr();
        if (!option->get_group().empty() && (!isHelp || !app.get_parent()))
            options.append(option);
    }
    return options;
}

// Calls `visit` for each command that is shown, outermost first, with the words that lead to it.
void walk(const CLI::App &app, const QStringList &words,
          const std::function<void(const CLI::App &, const QStringList &)> &visit)
{
    visit(app, words);
    for (const CLI::App *command : app.get_subcommands([](const CLI::App *) { return true; })) {
        if (!command->get_group().empty())
            walk(*command, words + QStringList{text(command->get_name())}, visit);
    }
}

// What may follow the words: commands, and "--long" and "-s" of options.
QStringList continuations(const CLI::App &app)
{
    QStringList result;
    for (const CLI::App *command : app.get_subcommands([](const CLI::App *) { return true; })) {
        if (!command->get_group().empty())
            result.append(text(command->get_name()));
    }
    for (const CLI::Option *option : ownOptions(app)) {
        for (const std::string &name : option->get_lnames())
            result.append("--" + text(name));
    }
    return result;
}

QString roff(QString words)
{
    words.replace('\\', "\\e").replace('-', "\\-");
    return words.startsWith('.') || words.startsWith('\'') ? "\\&" + words : words;
}

QString inQuotes(QString words)
{
    return '\'' + words.replace('\'', "'\\''") + '\'';
}

QString bash(const CLI::App &app)
{
    QString cases;
    walk(app, {}, [&](const CLI::App &command, const QStringList &words) {
        cases += QStringLiteral("    %1) offers=%2 ;;\n")
                     .arg(inQuotes(words.join(' ')), inQuotes(continuations(command).join(' ')));
    });
    // A command's words are followed only as far as they are commands.
    return QStringLiteral(R"(_lumenpost() {
  local current=${COMP_WORDS[COMP_CWORD]} so_far= offers= i
  _lumenpost_offers() {
    case $1 in
%1    *) return 1 ;;
    esac
  }
  for ((i = 1; i < COMP_CWORD; i++)); do
    _lumenpost_offers "${so_far:+$so_far }${COMP_WORDS[i]}" && so_far="${so_far:+$so_far }${COMP_WORDS[i]}"
  done
  _lumenpost_offers "$so_far"
  COMPREPLY=($(compgen -W "$offers" -- "$current"))
  [[ $current == -* || -n $COMPREPLY ]] || COMPREPLY=($(compgen -f -- "$current"))
}
complete -o filenames -F _lumenpost lumenpost
)")
        .arg(cases);
}

QString fish(const CLI::App &app)
{
    QString script;
    walk(app, {}, [&](const CLI::App &command, const QStringList &words) {
        QStringList seen;
        for (const QString &word : words)
            seen.append("__fish_seen_subcommand_from " + word);
        QStringList below;
        for (const CLI::App *next : command.get_subcommands([](const CLI::App *) { return true; })) {
            if (!next->get_group().empty())
                below.append(text(next->get_name()));
        }
        const QString here = seen.isEmpty() ? QStringLiteral("true") : seen.join("; and ");
        const QString before = seen.isEmpty()
                                   ? QStringLiteral("__fish_use_subcommand")
                                   : here + "; and not __fish_seen_subcommand_from " + below.join(' ');
        for (const CLI::App *next : command.get_subcommands([](const CLI::App *) { return true; })) {
            if (!next->get_group().empty())
                script += QStringLiteral("complete -c lumenpost -f -n %1 -a %2 -d %3\n")
                              .arg(inQuotes(before), text(next->get_name()),
                                   inQuotes(text(next->get_description())));
        }
        for (const CLI::Option *option : ownOptions(command)) {
            for (const std::string &name : option->get_lnames())
                script +=
                    QStringLiteral("complete -c lumenpost -n %1 -l %2%3 -d %4\n")
                        .arg(inQuotes(here), text(name), QString(option->get_expected_max() > 0 ? " -r" : ""),
                             inQuotes(text(option->get_description())));
        }
    });
    return script;
}

} // namespace

QString manual(const CLI::App &app)
{
    QString page =
        ".TH LUMENPOST 1\n.SH NAME\nlumenpost \\- " + roff(text(app.get_description())) +
        "\n.SH SYNOPSIS\n.B lumenpost\n[\\fIFILE\\fR... | \\fICOMMAND\\fR ...]\n.SH DESCRIPTION\n"
        "Without a command it starts in the tray, or shows the Library if it runs already. Files and "
        "links are handed to the running program.\n.SH COMMANDS\n";
    walk(app, {}, [&](const CLI::App &command, const QStringList &words) {
        if (words.isEmpty())
            page += ".SS Everywhere\n";
        else
            page += ".SS " + roff(words.join(' ')) + "\n" + roff(text(command.get_description())) + ".\n";
        for (const CLI::Option *option : ownOptions(command)) {
            QString name = text(option->get_name(option->get_positional(), true));
            if (option->get_expected_max() > 0 && !option->get_positional())
                name += ' ' + text(option->get_type_name()).section(':', 0, 0); // without the range
            page += ".TP\n.B " + roff(name) + "\n" + roff(text(option->get_description())) + ".\n";
        }
    });
    return page + ".SH EXIT STATUS\n" + roff(text(app.get_footer()).section("\n\n", -1)) +
           "\n.SH ENVIRONMENT\n.TP\n.B LUMENPOST_LIBRARY\nThe save folder, when \\-\\-library is not "
           "given.\n";
}

std::optional<QString> completion(const CLI::App &app, const QString &shell)
{
    if (shell == "bash")
        return bash(app);
    if (shell == "zsh") // reads the other shell's script
        return "#compdef lumenpost\nautoload -U +X bashcompinit && bashcompinit\n" + bash(app);
    if (shell == "fish")
        return fish(app);
    return std::nullopt;
}

} // namespace Reference
