"""Programs that scroll something, each with the columns in which it does. Their windows are captured whole."""
import pathlib, subprocess, tempfile

from pages import article, page, words


def text_file(work):
    path = pathlib.Path(work, "Scrolled.txt")
    path.write_text("".join(f"{i:4}  {words(i, 3 + i * 7 % 11)}\n" for i in range(260)))
    return path


def editor(work):
    return ["mousepad", "--disable-server", text_file(work)]


def terminal(work):
    return ["xterm", "-T", "Scrolled", "-xrm", "XTerm*alternateScroll:true", "-fa", "DejaVu Sans Mono", "-fs", "11", "-e",
            "less", "-~", "-Pprompt", text_file(work)]


def files(work):
    folder = pathlib.Path(work, "Scrolled")
    folder.mkdir(exist_ok=True)
    for i in range(170):
        (folder / f"{i:03} {words(i, 2)}.txt").write_text(words(i, 5))
    return ["thunar", folder]


def document(work):
    path = pathlib.Path(work, "Scrolled.pdf")
    if not path.exists():
        html = pathlib.Path(work, "document.html")
        html.write_text(page("main{padding:0}", f"<main>{article(22)}</main>"))
        subprocess.run(["chromium", "--headless", "--no-sandbox", "--disable-gpu", f"--print-to-pdf={path}", html.as_uri()],
                       capture_output=True)
    config = pathlib.Path(work, "zathura")
    config.mkdir(exist_ok=True)
    (config / "zathurarc").write_text("set adjust-open width\nset guioptions \"\"\n")
    return ["zathura", "--config-dir", config, "--data-dir", tempfile.mkdtemp(dir=work), path] # which opens at its top


# name: (command, first column, end column, the keys that lead to the top where it may not be shown first)
PROGRAMS = {
    "text editor": (editor, 10, 1040),
    "terminal": (terminal, 4, 1040),
    "file manager": (files, 260, 1040),
    "document viewer": (document, 10, 1040, "g g"),
}
