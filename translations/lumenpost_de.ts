<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AppTexts</name>
    <message>
        <source>Lumenpost can&apos;t see your screen yet</source>
        <translation>Lumenpost kann den Bildschirm noch nicht sehen</translation>
    </message>
    <message>
        <source>Quit &amp;&amp; Reopen</source>
        <translation>Beenden &amp;&amp; neu starten</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Einstellungen öffnen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Capture failed</source>
        <translation>Aufnahme fehlgeschlagen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Lumenpost didn&apos;t quit normally last time — Settings › Help can make a diagnostics file</source>
        <translation>Lumenpost wurde zuletzt nicht normal beendet — Einstellungen › Hilfe erstellt eine Diagnosedatei</translation>
    </message>
    <message>
        <source>Drag to select  ·  Click a window  ·  Return for full screen  ·  Esc to cancel</source>
        <translation>Ziehen wählt aus  ·  Klick nimmt ein Fenster  ·  Eingabe für den ganzen Bildschirm  ·  Esc bricht ab</translation>
    </message>
    <message>
        <source>Select the area to scroll  ·  Click a window  ·  Esc to cancel</source>
        <translation>Bereich zum Scrollen wählen  ·  Klick nimmt ein Fenster  ·  Esc bricht ab</translation>
    </message>
    <message>
        <source>Select an area to record  ·  Click a window  ·  Return for full screen  ·  Esc to cancel</source>
        <translation>Bereich für den Film wählen  ·  Klick nimmt ein Fenster  ·  Eingabe für den ganzen Bildschirm  ·  Esc bricht ab</translation>
    </message>
    <message>
        <source>Unknown Lumenpost link</source>
        <translation>Unbekannter Lumenpost-Link</translation>
    </message>
    <message>
        <source>No preset named “%1”</source>
        <translation>Keine Vorlage namens „%1“</translation>
    </message>
    <message>
        <source>Recording saved to Library</source>
        <translation>Film in der Bibliothek gesichert</translation>
    </message>
    <message>
        <source>Couldn&apos;t save to %1</source>
        <translation>Sichern in %1 nicht möglich</translation>
    </message>
    <message>
        <source>Captured &amp; copied to clipboard</source>
        <translation>Aufgenommen und in die Zwischenablage kopiert</translation>
    </message>
    <message>
        <source>Saved to Library</source>
        <translation>In der Bibliothek gesichert</translation>
    </message>
    <message>
        <source>%1 was changed elsewhere, so its earlier objects were set aside</source>
        <translation>%1 wurde anderswo geändert, daher wurden die früheren Objekte beiseitegelegt</translation>
    </message>
    <message>
        <source>%1 can’t be read as a picture</source>
        <translation>%1 ist nicht als Bild lesbar</translation>
    </message>
    <message>
        <source>Unsaved edits can’t be read</source>
        <translation>Ungesicherte Änderungen sind nicht lesbar</translation>
    </message>
    <message>
        <source>Couldn&apos;t open %1</source>
        <translation>%1 konnte nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Open Image</source>
        <translation>Bild öffnen</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>No captures to pin yet</source>
        <translation>Noch keine Aufnahmen zum Anheften</translation>
    </message>
    <message>
        <source>Lumenpost can&apos;t keep “%1”, which tells later starts that it runs.</source>
        <translation>Lumenpost kann „%1“ nicht halten, woran spätere Starts erkennen, dass es läuft.</translation>
    </message>
    <message>
        <source>Lumenpost runs already, but doesn&apos;t answer.</source>
        <translation>Lumenpost läuft bereits, antwortet aber nicht.</translation>
    </message>
    <message>
        <source>Later starts of Lumenpost can&apos;t be handed over.</source>
        <translation>Spätere Starts von Lumenpost können nicht übergeben werden.</translation>
    </message>
    <message>
        <source>Capture Region or Window</source>
        <translation>Bereich oder Fenster aufnehmen</translation>
    </message>
    <message>
        <source>Capture Full Screen</source>
        <translation>Ganzen Bildschirm aufnehmen</translation>
    </message>
    <message>
        <source>Capture in 3 Seconds</source>
        <translation>In 3 Sekunden aufnehmen</translation>
    </message>
    <message>
        <source>Scrolling Capture</source>
        <translation>Scrollende Aufnahme</translation>
    </message>
    <message>
        <source>Stop Recording</source>
        <translation>Film beenden</translation>
    </message>
    <message>
        <source>Record Screen</source>
        <translation>Bildschirm filmen</translation>
    </message>
    <message>
        <source>Finish Steps</source>
        <translation>Schritte abschließen</translation>
    </message>
    <message>
        <source>Record Steps (How-To Guide)</source>
        <translation>Schritte aufzeichnen (Anleitung)</translation>
    </message>
    <message>
        <source>Grab Text from Screen</source>
        <translation>Text vom Bildschirm holen</translation>
    </message>
    <message>
        <source>Open Library…</source>
        <translation>Bibliothek öffnen …</translation>
    </message>
    <message>
        <source>Pin Last Capture</source>
        <translation>Letzte Aufnahme anheften</translation>
    </message>
    <message>
        <source>Open Image…</source>
        <translation>Bild öffnen …</translation>
    </message>
    <message>
        <source>Close All Pins</source>
        <translation>Alle angehefteten Bilder schließen</translation>
    </message>
    <message>
        <source>Open Editor After Capture</source>
        <translation>Nach der Aufnahme Editor öffnen</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Einstellungen …</translation>
    </message>
    <message>
        <source>Welcome &amp; Permissions…</source>
        <translation>Willkommen &amp; Berechtigungen …</translation>
    </message>
    <message>
        <source>Quit Lumenpost</source>
        <translation>Lumenpost beenden</translation>
    </message>
    <message>
        <source>Tidegrasp is now Lumenpost — your captures and settings came along</source>
        <translation>Tidegrasp heißt jetzt Lumenpost — Aufnahmen und Einstellungen sind mitgekommen</translation>
    </message>
    <message>
        <source>Lumenpost couldn&apos;t read an image from the selection.</source>
        <translation>Lumenpost konnte aus der Auswahl kein Bild lesen.</translation>
    </message>
    <message>
        <source>This desktop shows no tray: start Lumenpost again, or press %1, for the capture panel</source>
        <translation>Dieser Desktop zeigt keine Symbolleiste: Lumenpost noch einmal starten oder %1 drücken, um das Aufnahmefeld zu öffnen</translation>
    </message>
    <message>
        <source>There is a sound missing in the film: %1</source>
        <translation>Im Film fehlt ein Ton: %1</translation>
    </message>
    <message>
        <source>Saved as PNG: %1 can’t hold a picture of %2 × %3 pixels</source>
        <translation>Als PNG gesichert: %1 fasst kein Bild von %2 × %3 Pixeln</translation>
    </message>
    <message>
        <source>How to … in %1</source>
        <translation>So geht … in %1</translation>
    </message>
    <message>
        <source>How-To Guide</source>
        <translation>Anleitung</translation>
    </message>
    <message>
        <source>The guide wasn&apos;t exported; it is offered when Lumenpost starts again</source>
        <translation>Die Anleitung wurde nicht exportiert; sie wird beim nächsten Start von Lumenpost angeboten</translation>
    </message>
    <message>
        <source>Image copied to clipboard</source>
        <translation>Bild in die Zwischenablage kopiert</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Pin</source>
        <translation>Anheften</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>Papierkorb</translation>
    </message>
    <message>
        <source>Moved to the Trash</source>
        <translation>In den Papierkorb gelegt</translation>
    </message>
    <message>
        <source>Open Panel</source>
        <translation>Aufnahmefeld öffnen</translation>
    </message>
    <message>
        <source>Recording failed</source>
        <translation>Aufnahme fehlgeschlagen</translation>
    </message>
    <message>
        <source>Steps</source>
        <translation>Schritte</translation>
    </message>
    <message>
        <source>The whole picture doesn’t fit in memory.</source>
        <translation>Das ganze Bild passt nicht in den Speicher.</translation>
    </message>
    <message>
        <source>This desktop shows no tray: start Lumenpost again for the capture panel</source>
        <translation>Dieser Desktop zeigt keine Symbolleiste: Lumenpost noch einmal starten, um das Aufnahmefeld zu öffnen</translation>
    </message>
    <message>
        <source>Go to Pinned Image</source>
        <translation>Zum angehefteten Bild</translation>
    </message>
</context>
<context>
    <name>BaseTexts</name>
    <message>
        <source>there is a folder of that name</source>
        <translation>es gibt einen Ordner dieses Namens</translation>
    </message>
    <message>
        <source>it is no regular file</source>
        <translation>es ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>%1 is no regular file.</source>
        <translation>%1 ist keine gewöhnliche Datei.</translation>
    </message>
    <message>
        <source>it could not be encoded</source>
        <translation>es konnte nicht kodiert werden</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>der Datenträger ist voll</translation>
    </message>
    <message>
        <source>your share of the disk is used up</source>
        <translation>Ihr Anteil am Datenträger ist aufgebraucht</translation>
    </message>
    <message>
        <source>the file would be larger than is allowed here</source>
        <translation>die Datei würde größer, als hier erlaubt ist</translation>
    </message>
    <message>
        <source>the disk can&apos;t be written to</source>
        <translation>der Datenträger ist nicht beschreibbar</translation>
    </message>
    <message>
        <source>permission denied</source>
        <translation>keine Berechtigung</translation>
    </message>
    <message>
        <source>there is no such folder</source>
        <translation>diesen Ordner gibt es nicht</translation>
    </message>
    <message>
        <source>the name is too long</source>
        <translation>der Name ist zu lang</translation>
    </message>
    <message>
        <source>too many files are open</source>
        <translation>zu viele Dateien sind geöffnet</translation>
    </message>
    <message>
        <source>the disk reports an error</source>
        <translation>der Datenträger meldet einen Fehler</translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: %2.</source>
        <translation>%1 konnte nicht geschrieben werden: %2.</translation>
    </message>
    <message>
        <source>There is no file %1.</source>
        <translation>Es gibt keine Datei %1.</translation>
    </message>
    <message>
        <source>Couldn&apos;t read %1: %2.</source>
        <translation>%1 konnte nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>Another program is using %1.</source>
        <translation>Ein anderes Programm benutzt %1.</translation>
    </message>
    <message>
        <source>%1 is not valid JSON: %2.</source>
        <translation>%1 ist kein gültiges JSON: %2.</translation>
    </message>
    <message>
        <source>A part of Lumenpost is missing (%1): install it again.</source>
        <translation>Ein Teil von Lumenpost fehlt (%1): bitte neu installieren.</translation>
    </message>
    <message>
        <source>%1 is a folder.</source>
        <translation>%1 ist ein Ordner.</translation>
    </message>
    <message>
        <source>%1 is too large to be read: %2.</source>
        <translation>%1 ist zu groß zum Lesen: %2.</translation>
    </message>
    <message>
        <source>Capture</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>There is no place for temporary files: %1.</source>
        <translation>Es gibt keinen Platz für temporäre Dateien: %1.</translation>
    </message>
    <message>
        <source>This needs a part of Lumenpost that isn’t installed: the package “%1”.</source>
        <translation>Dafür fehlt ein Teil von Lumenpost: das Paket „%1“.</translation>
    </message>
</context>
<context>
    <name>CaptureTexts</name>
    <message>
        <source>The region is too large.</source>
        <translation>Der Bereich ist zu groß.</translation>
    </message>
    <message>
        <source>That window is no longer available.</source>
        <translation>Dieses Fenster gibt es nicht mehr.</translation>
    </message>
    <message>
        <source>No displays could be captured. Check Screen Recording permission.</source>
        <translation>Kein Bildschirm konnte aufgenommen werden. Bitte die Berechtigung für Bildschirmaufnahmen prüfen.</translation>
    </message>
    <message>
        <source>No display shows anything of that region.</source>
        <translation>Kein Bildschirm zeigt etwas von diesem Bereich.</translation>
    </message>
    <message>
        <source>Auto-scrolling…</source>
        <translation>Scrollt von selbst …</translation>
    </message>
    <message>
        <source>Scroll the area slowly</source>
        <translation>Den Bereich langsam scrollen</translation>
    </message>
    <message>
        <source>Scroll back a little</source>
        <translation>Ein wenig zurückrollen</translation>
    </message>
    <message>
        <source>Scrolling back…</source>
        <translation>Es wird zurückgerollt …</translation>
    </message>
    <message>
        <source>The picture is long, and it goes on</source>
        <translation>Das Bild ist lang, und es geht weiter</translation>
    </message>
    <message>
        <source>Nothing in that region scrolled.</source>
        <translation>In diesem Bereich ließ sich nichts scrollen.</translation>
    </message>
    <message>
        <source>Something in that region scrolled, but it could not be followed.</source>
        <translation>In diesem Bereich wurde gescrollt, aber es ließ sich nicht verfolgen.</translation>
    </message>
    <message>
        <source>The picture ends early: what came next could not be followed.</source>
        <translation>Das Bild endet früh: Was danach kam, ließ sich nicht verfolgen.</translation>
    </message>
    <message>
        <source>The picture has reached its limit, and the content goes on below it.</source>
        <translation>Das Bild hat seine Grenze erreicht, und der Inhalt geht darunter weiter.</translation>
    </message>
    <message>
        <source>So many rows look alike that some may be missing from the picture.</source>
        <translation>So viele Zeilen sehen gleich aus, dass im Bild einige fehlen können.</translation>
    </message>
</context>
<context>
    <name>CaptureUiTexts</name>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message numerus="yes">
        <source>%n frame(s)</source>
        <translation>
            <numerusform>%n Bild</numerusform>
            <numerusform>%n Bilder</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 · %2 px</source>
        <translation>%1 · %2 px</translation>
    </message>
    <message>
        <source>Go On</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>As many frames again.</source>
        <translation>Noch einmal so viele Bilder.</translation>
    </message>
    <message>
        <source>Keep what was captured.</source>
        <translation>Behalten, was aufgenommen wurde.</translation>
    </message>
    <message>
        <source>Arrow keys move the pointer, with Shift faster. Space begins and ends an area. Return takes it, Esc cancels.</source>
        <translation>Die Pfeiltasten bewegen den Zeiger, mit der Umschalttaste schneller. Die Leertaste beginnt und beendet einen Bereich. Die Eingabetaste übernimmt ihn, Esc bricht ab.</translation>
    </message>
    <message>
        <source>%1 by %2 at %3, %4</source>
        <translation>%1 mal %2 bei %3, %4</translation>
    </message>
    <message>
        <source>Area begins at %1</source>
        <translation>Bereich beginnt bei %1</translation>
    </message>
    <message>
        <source>Choose an area or a window</source>
        <translation>Bereich oder Fenster wählen</translation>
    </message>
    <message>
        <source>Choose what to capture</source>
        <translation>Wählen, was aufgenommen wird</translation>
    </message>
    <message>
        <source>Scrolling capture</source>
        <translation>Scrollende Aufnahme</translation>
    </message>
</context>
<context>
    <name>CliTexts</name>
    <message>
        <source>Include the pointer</source>
        <translation>Den Mauszeiger mit aufnehmen</translation>
    </message>
    <message>
        <source>Wait this many seconds first</source>
        <translation>Zuerst so viele Sekunden warten</translation>
    </message>
    <message>
        <source>Also copy it to the clipboard</source>
        <translation>Auch in die Zwischenablage kopieren</translation>
    </message>
    <message>
        <source>Write this file instead of a new one in the Library</source>
        <translation>Diese Datei schreiben statt einer neuen in der Bibliothek</translation>
    </message>
    <message>
        <source>There is no display %1.</source>
        <translation>Es gibt keinen Bildschirm %1.</translation>
    </message>
    <message>
        <source>A whole display</source>
        <translation>Einen ganzen Bildschirm</translation>
    </message>
    <message>
        <source>Its id, as `displays` lists it; else the one under the pointer</source>
        <translation>Seine Kennung, wie `displays` sie zeigt; sonst der unter dem Mauszeiger</translation>
    </message>
    <message>
        <source>A part of the desktop</source>
        <translation>Einen Teil der Arbeitsfläche</translation>
    </message>
    <message>
        <source>One window alone, also when it is covered</source>
        <translation>Ein Fenster allein, auch wenn es verdeckt ist</translation>
    </message>
    <message>
        <source>Its id, as `windows` lists it</source>
        <translation>Seine Kennung, wie `windows` sie zeigt</translation>
    </message>
    <message>
        <source>Without its title bar and frame</source>
        <translation>Ohne Titelleiste und Rahmen</translation>
    </message>
    <message>
        <source>List the displays that can be captured</source>
        <translation>Die Bildschirme zeigen, die aufgenommen werden können</translation>
    </message>
    <message>
        <source>One JSON array</source>
        <translation>Ein JSON-Array</translation>
    </message>
    <message>
        <source>List the windows that can be captured, front to back</source>
        <translation>Die Fenster zeigen, die aufgenommen werden können, von vorn nach hinten</translation>
    </message>
    <message>
        <source>Take a picture of the screen</source>
        <translation>Ein Bild vom Bildschirm aufnehmen</translation>
    </message>
    <message>
        <source>Capture what is on the screen, mark it up, keep it and share it.</source>
        <translation>Aufnehmen, was auf dem Bildschirm ist, es auszeichnen, aufbewahren und teilen.</translation>
    </message>
    <message>
        <source>Show the help of every command</source>
        <translation>Die Hilfe aller Befehle zeigen</translation>
    </message>
    <message>
        <source>Use this folder as the save folder, for this call alone</source>
        <translation>Diesen Ordner als Ablage benutzen, nur für diesen Aufruf</translation>
    </message>
    <message>
        <source>Print the manual page</source>
        <translation>Die Handbuchseite ausgeben</translation>
    </message>
    <message>
        <source>Print a shell&apos;s completion script</source>
        <translation>Das Vervollständigungsskript einer Shell ausgeben</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;</source>
        <translation>Es gibt keinen Befehl &quot;%1&quot;</translation>
    </message>
    <message>
        <source>%1: see %2 --help.</source>
        <translation>%1: siehe %2 --help.</translation>
    </message>
    <message>
        <source>The result could not be printed.</source>
        <translation>Das Ergebnis konnte nicht ausgegeben werden.</translation>
    </message>
    <message>
        <source>It was given up before it was done.</source>
        <translation>Es wurde aufgegeben, bevor es fertig war.</translation>
    </message>
    <message>
        <source>Copy files into a folder, converted and scaled if asked</source>
        <translation>Dateien in einen Ordner kopieren, auf Wunsch umgewandelt und verkleinert</translation>
    </message>
    <message>
        <source>Images and films; films are copied as they are</source>
        <translation>Bilder und Filme; Filme werden unverändert kopiert</translation>
    </message>
    <message>
        <source>The folder; it is made if it isn&apos;t there</source>
        <translation>Der Ordner; er wird angelegt, wenn er fehlt</translation>
    </message>
    <message>
        <source>The most pixels of the longer edge; nothing is enlarged</source>
        <translation>Höchstens so viele Pixel an der längeren Seite; nichts wird vergrößert</translation>
    </message>
    <message>
        <source>The folder %1 could not be made.</source>
        <translation>Der Ordner %1 konnte nicht angelegt werden.</translation>
    </message>
    <message>
        <source>Exporting</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Make a PDF with a page for each image</source>
        <translation>Ein PDF mit einer Seite je Bild erstellen</translation>
    </message>
    <message>
        <source>Stands on the first page</source>
        <translation>Steht auf der ersten Seite</translation>
    </message>
    <message>
        <source>Writing pages</source>
        <translation>Seiten schreiben</translation>
    </message>
    <message>
        <source>The picture would be too large or too small to be made.</source>
        <translation>Das Bild würde zu groß oder zu klein.</translation>
    </message>
    <message>
        <source>Make one picture of several</source>
        <translation>Aus mehreren Bildern eines machen</translation>
    </message>
    <message>
        <source>Pixels between and around the pictures</source>
        <translation>Pixel zwischen und um die Bilder</translation>
    </message>
    <message>
        <source>Its extension says the format</source>
        <translation>Ihre Endung bestimmt das Format</translation>
    </message>
    <message>
        <source>Make the tall picture of a numbered guide</source>
        <translation>Das hohe Bild einer nummerierten Anleitung erstellen</translation>
    </message>
    <message>
        <source>The steps, in order</source>
        <translation>Die Schritte der Reihe nach</translation>
    </message>
    <message>
        <source>Stands in a band at the top</source>
        <translation>Steht in einem Streifen ganz oben</translation>
    </message>
    <message>
        <source>A text file with a caption a line</source>
        <translation>Eine Textdatei mit einer Bildunterschrift je Zeile</translation>
    </message>
    <message>
        <source>List the files of the Library</source>
        <translation>Die Dateien der Bibliothek zeigen</translation>
    </message>
    <message>
        <source>One JSON array with date, bytes, favorite, source and collections</source>
        <translation>Ein JSON-Array mit Datum, Bytes, Favorit, Quelle und Sammlungen</translation>
    </message>
    <message>
        <source>Copy files into the Library</source>
        <translation>Dateien in die Bibliothek kopieren</translation>
    </message>
    <message>
        <source>Images and films</source>
        <translation>Bilder und Filme</translation>
    </message>
    <message>
        <source>Give a file another name; its extension stays</source>
        <translation>Einer Datei einen anderen Namen geben; ihre Endung bleibt</translation>
    </message>
    <message>
        <source>Move files of the Library to the Trash</source>
        <translation>Dateien der Bibliothek in den Papierkorb legen</translation>
    </message>
    <message>
        <source>The files of the Library</source>
        <translation>Die Dateien der Bibliothek</translation>
    </message>
    <message>
        <source>Reading</source>
        <translation>Lesen</translation>
    </message>
    <message>
        <source>Describing</source>
        <translation>Beschreiben</translation>
    </message>
    <message>
        <source>indexed %1</source>
        <translation>gelesen %1</translation>
    </message>
    <message>
        <source>described %1</source>
        <translation>beschrieben %1</translation>
    </message>
    <message>
        <source>favorites %1</source>
        <translation>Favoriten %1</translation>
    </message>
    <message>
        <source>collections %1</source>
        <translation>Sammlungen %1</translation>
    </message>
    <message>
        <source>sources %1</source>
        <translation>Quellen %1</translation>
    </message>
    <message>
        <source>descriptions %1</source>
        <translation>Beschreibungen %1</translation>
    </message>
    <message>
        <source>texts %1</source>
        <translation>Texte %1</translation>
    </message>
    <message>
        <source>There is no file %1.</source>
        <translation>Es gibt keine Datei %1.</translation>
    </message>
    <message>
        <source>%1 is not in the Library.</source>
        <translation>%1 ist nicht in der Bibliothek.</translation>
    </message>
    <message>
        <source>Star a file of the Library, or take its star</source>
        <translation>Einer Datei der Bibliothek einen Stern geben oder nehmen</translation>
    </message>
    <message>
        <source>There is no collection with the id %1.</source>
        <translation>Es gibt keine Sammlung mit der Kennung %1.</translation>
    </message>
    <message>
        <source>A collection needs a name.</source>
        <translation>Eine Sammlung braucht einen Namen.</translation>
    </message>
    <message>
        <source>Collections of the Library&apos;s files</source>
        <translation>Sammlungen der Dateien der Bibliothek</translation>
    </message>
    <message>
        <source>One JSON array with id, name and items</source>
        <translation>Ein JSON-Array mit Kennung, Name und Dateien</translation>
    </message>
    <message>
        <source>Make a collection; prints its id</source>
        <translation>Eine Sammlung anlegen; gibt ihre Kennung aus</translation>
    </message>
    <message>
        <source>Give a collection another name</source>
        <translation>Einer Sammlung einen anderen Namen geben</translation>
    </message>
    <message>
        <source>Delete a collection; its files stay</source>
        <translation>Eine Sammlung löschen; ihre Dateien bleiben</translation>
    </message>
    <message>
        <source>Put files into a collection</source>
        <translation>Dateien in eine Sammlung legen</translation>
    </message>
    <message>
        <source>Take files out of a collection; they stay in the Library</source>
        <translation>Dateien aus einer Sammlung nehmen; sie bleiben in der Bibliothek</translation>
    </message>
    <message>
        <source>The earlier states of a file: one JSON array, newest first</source>
        <translation>Die früheren Stände einer Datei: ein JSON-Array, neueste zuerst</translation>
    </message>
    <message>
        <source>Go back to an earlier state; the present one becomes the newest version</source>
        <translation>Zu einem früheren Stand zurückkehren; der jetzige wird zur neuesten Version</translation>
    </message>
    <message>
        <source>%1 has no version %2.</source>
        <translation>%1 hat keine Version %2.</translation>
    </message>
    <message>
        <source>%1 could not be restored.</source>
        <translation>%1 konnte nicht wiederhergestellt werden.</translation>
    </message>
    <message>
        <source>Groups of look-alike images, each newest first: one JSON array of arrays of paths</source>
        <translation>Gruppen ähnlicher Bilder, je neueste zuerst: ein JSON-Array von Arrays von Pfaden</translation>
    </message>
    <message>
        <source>Comparing</source>
        <translation>Vergleichen</translation>
    </message>
    <message>
        <source>Move captures to the Trash that are older than so many days; favorites and what is in a collection stay. Prints their number</source>
        <translation>Aufnahmen in den Papierkorb legen, die älter als so viele Tage sind; Favoriten und Dateien in Sammlungen bleiben. Gibt ihre Zahl aus</translation>
    </message>
    <message>
        <source>The reply holds no text.</source>
        <translation>Die Antwort enthält keinen Text.</translation>
    </message>
    <message>
        <source>Ask the AI service about a picture, with your own key</source>
        <translation>Den KI-Dienst nach einem Bild fragen, mit eigenem Schlüssel</translation>
    </message>
    <message>
        <source>What to ask for: describe (if not given), steps, altText, name or caption</source>
        <translation>Wonach gefragt wird: describe (wenn nichts angegeben), steps, altText, name oder caption</translation>
    </message>
    <message>
        <source>Upload a picture and print its public link</source>
        <translation>Ein Bild hochladen und den öffentlichen Link ausgeben</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has none of the extensions png, jpg, jpeg and heic</source>
        <translation>&quot;%1&quot; hat keine der Endungen png, jpg, jpeg und heic</translation>
    </message>
    <message>
        <source>%1 can&apos;t hold %2 × %3 pixels, so the picture is written as PNG.</source>
        <translation>%1 fasst keine %2 × %3 Pixel, daher wird das Bild als PNG geschrieben.</translation>
    </message>
    <message>
        <source>Nothing to redact was found, so nothing was written.</source>
        <translation>Es wurde nichts zum Schwärzen gefunden, daher wurde nichts geschrieben.</translation>
    </message>
    <message>
        <source>Print an object that tells the coordinates and the picture&apos;s size too</source>
        <translation>Ein Objekt ausgeben, das auch Koordinaten und Bildgröße nennt</translation>
    </message>
    <message>
        <source>Read the text in pictures</source>
        <translation>Den Text in Bildern lesen</translation>
    </message>
    <message>
        <source>Print each file with its lines and their boxes: x, y, width and height as fractions of the picture, origin at the lower left</source>
        <translation>Jede Datei mit ihren Zeilen und deren Rechtecken ausgeben: x, y, Breite und Höhe als Anteile des Bildes, Ursprung unten links</translation>
    </message>
    <message>
        <source>Where the text in a picture stands</source>
        <translation>Wo in einem Bild Text steht</translation>
    </message>
    <message>
        <source>Only addresses, numbers, keys and tokens</source>
        <translation>Nur Adressen, Nummern, Schlüssel und Token</translation>
    </message>
    <message>
        <source>Where the faces in a picture are</source>
        <translation>Wo in einem Bild Gesichter sind</translation>
    </message>
    <message>
        <source>Find what is private in a picture and pixelate it</source>
        <translation>Privates in einem Bild finden und verpixeln</translation>
    </message>
    <message>
        <source>What to hide: sensitive, allText or faces</source>
        <translation>Was verborgen wird: sensitive, allText oder faces</translation>
    </message>
    <message>
        <source>Where the picture goes</source>
        <translation>Wohin das Bild kommt</translation>
    </message>
    <message>
        <source>Print how many places were hidden, and where in pixels</source>
        <translation>Ausgeben, wie viele Stellen verborgen wurden und wo, in Pixeln</translation>
    </message>
    <message>
        <source>Draw a project&apos;s objects and effects</source>
        <translation>Objekte und Effekte eines Projekts zeichnen</translation>
    </message>
    <message>
        <source>The project&apos;s directory; or, with --project, the picture under the objects</source>
        <translation>Der Ordner des Projekts; oder, mit --project, das Bild unter den Objekten</translation>
    </message>
    <message>
        <source>The description of objects and effects (project.json)</source>
        <translation>Die Beschreibung der Objekte und Effekte (project.json)</translation>
    </message>
    <message>
        <source>Where the picture goes; its extension says the format</source>
        <translation>Wohin das Bild kommt; die Endung bestimmt das Format</translation>
    </message>
    <message>
        <source>Leave out border, shadow, corners and backdrop</source>
        <translation>Rahmen, Schatten, Ecken und Hintergrund weglassen</translation>
    </message>
    <message>
        <source>%1 is left out: it has another size than the first frame.</source>
        <translation>%1 wird ausgelassen: Es hat eine andere Größe als das erste Bild.</translation>
    </message>
    <message>
        <source>The whole picture doesn&apos;t fit in memory.</source>
        <translation>Das ganze Bild passt nicht in den Speicher.</translation>
    </message>
    <message>
        <source>Join the frames of something that scrolled into one picture</source>
        <translation>Die Bilder eines gescrollten Bereichs zu einem zusammensetzen</translation>
    </message>
    <message>
        <source>Pictures of one size, in the order they were taken</source>
        <translation>Bilder einer Größe, in der Reihenfolge der Aufnahme</translation>
    </message>
    <message>
        <source>The picture to write</source>
        <translation>Das zu schreibende Bild</translation>
    </message>
    <message>
        <source>Print how many frames were used, each step and the size</source>
        <translation>Ausgeben, wie viele Bilder benutzt wurden, jeden Schritt und die Größe</translation>
    </message>
    <message>
        <source>No display shows anything of that region.</source>
        <translation>Kein Bildschirm zeigt etwas von diesem Bereich.</translation>
    </message>
    <message>
        <source>Scroll a region to its end and join what it showed</source>
        <translation>Einen Bereich bis zum Ende scrollen und zusammensetzen, was er zeigte</translation>
    </message>
    <message>
        <source>Stop after so many frames</source>
        <translation>Nach so vielen Bildern aufhören</translation>
    </message>
    <message>
        <source>Files whose name, application, text or description holds the query as it stands, newest first</source>
        <translation>Dateien, deren Name, Programm, Text oder Beschreibung die Suche enthält, neueste zuerst</translation>
    </message>
    <message>
        <source>Read the text of images that have none yet, so that search finds them. Prints their number</source>
        <translation>Den Text von Bildern lesen, die noch keinen haben, damit die Suche sie findet. Gibt ihre Zahl aus</translation>
    </message>
    <message>
        <source>Ask the AI service about those without a description too</source>
        <translation>Auch den KI-Dienst nach denen ohne Beschreibung fragen</translation>
    </message>
    <message>
        <source>Write all that is known into a file</source>
        <translation>Alles Bekannte in eine Datei schreiben</translation>
    </message>
    <message>
        <source>Merge what a file knows; nothing that is there is overwritten. Prints what was new</source>
        <translation>Übernehmen, was eine Datei weiß; nichts Vorhandenes wird überschrieben. Gibt aus, was neu war</translation>
    </message>
    <message>
        <source>Put the logs and a summary of the system into one file, to be sent with a report</source>
        <translation>Protokolle und eine Übersicht des Systems in eine Datei packen, für einen Bericht</translation>
    </message>
    <message>
        <source>There is no display to record.</source>
        <translation>Es gibt keinen Bildschirm zum Filmen.</translation>
    </message>
    <message>
        <source>A recording that broke off is kept as %1.</source>
        <translation>Ein abgebrochener Film ist als %1 aufbewahrt.</translation>
    </message>
    <message>
        <source>There is a sound missing in the film: %1</source>
        <translation>Im Film fehlt ein Ton: %1</translation>
    </message>
    <message>
        <source>The film itself can&apos;t be the file that is written.</source>
        <translation>Der Film selbst kann nicht die geschriebene Datei sein.</translation>
    </message>
    <message>
        <source>Record the screen or a region until an interrupt, or for some seconds</source>
        <translation>Den Bildschirm oder einen Bereich filmen, bis zum Abbruch oder einige Sekunden lang</translation>
    </message>
    <message>
        <source>Stop after so many seconds</source>
        <translation>Nach so vielen Sekunden aufhören</translation>
    </message>
    <message>
        <source>Also record what is played</source>
        <translation>Auch aufnehmen, was abgespielt wird</translation>
    </message>
    <message>
        <source>Also record the microphone</source>
        <translation>Auch das Mikrofon aufnehmen</translation>
    </message>
    <message>
        <source>Write this .mov file instead of a new one in the Library</source>
        <translation>Diese .mov-Datei schreiben statt einer neuen in der Bibliothek</translation>
    </message>
    <message>
        <source>The film</source>
        <translation>Der Film</translation>
    </message>
    <message>
        <source>Leave out what comes before this second</source>
        <translation>Weglassen, was vor dieser Sekunde kommt</translation>
    </message>
    <message>
        <source>Leave out what comes after this second</source>
        <translation>Weglassen, was nach dieser Sekunde kommt</translation>
    </message>
    <message>
        <source>Turn what is spoken in a film into subtitles</source>
        <translation>Gesprochenes in einem Film zu Untertiteln machen</translation>
    </message>
    <message>
        <source>Write this SubRip file instead of printing it</source>
        <translation>Diese SubRip-Datei schreiben statt sie auszugeben</translation>
    </message>
    <message>
        <source>Make an animated GIF of a film, of a minute at most</source>
        <translation>Aus einem Film ein bewegtes GIF machen, höchstens eine Minute lang</translation>
    </message>
    <message>
        <source>The GIF to write</source>
        <translation>Das zu schreibende GIF</translation>
    </message>
    <message>
        <source>Make an MP4 of a film or a part of it</source>
        <translation>Aus einem Film oder einem Teil ein MP4 machen</translation>
    </message>
    <message>
        <source>The MP4 to write</source>
        <translation>Das zu schreibende MP4</translation>
    </message>
    <message>
        <source>X,Y,WxH in points from the top left</source>
        <translation>X,Y,BxH in Punkten von links oben</translation>
    </message>
    <message>
        <source>Print the path, the number of frames, each step and why it ended</source>
        <translation>Pfad, Zahl der Einzelbilder, jeden Schritt und den Grund des Endes ausgeben</translation>
    </message>
    <message>
        <source>Read in this language alone, such as de or deu; may be given several times. Otherwise every installed one is used where lines are in it</source>
        <translation>Nur in dieser Sprache lesen, etwa de oder deu; kann mehrmals angegeben werden. Sonst dient jede installierte, wo Zeilen in ihr stehen</translation>
    </message>
    <message>
        <source>A kind of private text to leave as it is, beside those that the settings leave; may be given several times</source>
        <translation>Eine Art privaten Texts, die stehen bleibt, neben denen, die die Einstellungen stehen lassen; kann mehrmals angegeben werden</translation>
    </message>
</context>
<context>
    <name>DiagnosticsTexts</name>
    <message>
        <source>Couldn&apos;t create the diagnostics file</source>
        <translation>Die Diagnosedatei konnte nicht erstellt werden</translation>
    </message>
</context>
<context>
    <name>DocumentTexts</name>
    <message>
        <source>Indigo</source>
        <translation>Indigo</translation>
    </message>
    <message>
        <source>Sunset</source>
        <translation>Abendrot</translation>
    </message>
    <message>
        <source>Ocean</source>
        <translation>Ozean</translation>
    </message>
    <message>
        <source>Mint</source>
        <translation>Minze</translation>
    </message>
    <message>
        <source>Graphite</source>
        <translation>Graphit</translation>
    </message>
    <message>
        <source>The picture could not be written as HEIC: %1.</source>
        <translation>Das Bild konnte nicht als HEIC geschrieben werden: %1.</translation>
    </message>
    <message>
        <source>The HEIC picture is damaged.</source>
        <translation>Das HEIC-Bild ist beschädigt.</translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: there is no picture.</source>
        <translation>%1 konnte nicht geschrieben werden: Es gibt kein Bild.</translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: pictures are written as .png, .jpg, .jpeg or .heic.</source>
        <translation>%1 konnte nicht geschrieben werden: Bilder werden als .png, .jpg, .jpeg oder .heic geschrieben.</translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: files of this kind hold at most %2 pixels a side, and the picture has %3 × %4.</source>
        <translation>%1 konnte nicht geschrieben werden: Dateien dieser Art fassen höchstens %2 Pixel je Seite, und das Bild hat %3 × %4.</translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: the picture could not be encoded.</source>
        <translation>%1 konnte nicht geschrieben werden: Das Bild konnte nicht kodiert werden.</translation>
    </message>
    <message>
        <source>The picture</source>
        <translation>Das Bild</translation>
    </message>
    <message>
        <source>%1 is cut off: its end is missing.</source>
        <translation>%1 ist abgeschnitten: Das Ende fehlt.</translation>
    </message>
    <message>
        <source>%1 is damaged.</source>
        <translation>%1 ist beschädigt.</translation>
    </message>
    <message>
        <source>%1 is too large: it has %2 × %3 pixels, and at most %4 million pixels can be worked with.</source>
        <translation>%1 ist zu groß: Es hat %2 × %3 Pixel, und höchstens %4 Millionen Pixel können bearbeitet werden.</translation>
    </message>
    <message>
        <source>%1 is empty.</source>
        <translation>%1 ist leer.</translation>
    </message>
    <message>
        <source>%1 is not a picture that Lumenpost can read.</source>
        <translation>%1 ist kein Bild, das Lumenpost lesen kann.</translation>
    </message>
    <message numerus="yes">
        <source>%n pasted picture(s) can&apos;t be shown: too large or damaged. What is stored of them stays.</source>
        <translation>
            <numerusform>%n eingefügtes Bild kann nicht gezeigt werden: zu groß oder beschädigt. Was davon gespeichert ist, bleibt.</numerusform>
            <numerusform>%n eingefügte Bilder können nicht gezeigt werden: zu groß oder beschädigt. Was davon gespeichert ist, bleibt.</numerusform>
        </translation>
    </message>
    <message>
        <source>This is no readable project, it is not one JSON object.</source>
        <translation>Das ist kein lesbares Projekt, es ist nicht ein einzelnes JSON-Objekt.</translation>
    </message>
    <message>
        <source>This is no readable project, a key is missing or has the wrong type.</source>
        <translation>Das ist kein lesbares Projekt, ein Schlüssel fehlt oder hat den falschen Typ.</translation>
    </message>
    <message>
        <source>This is no readable project, a key of an object is missing or has the wrong type.</source>
        <translation>Das ist kein lesbares Projekt, der Schlüssel eines Objekts fehlt oder hat den falschen Typ.</translation>
    </message>
    <message>
        <source>There is no project at %1.</source>
        <translation>Bei %1 gibt es kein Projekt.</translation>
    </message>
    <message>
        <source>Couldn&apos;t make the folder %1.</source>
        <translation>Der Ordner %1 konnte nicht angelegt werden.</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Auswählen</translation>
    </message>
    <message>
        <source>Pick, move and resize objects. Double-click text to edit it.</source>
        <translation>Objekte auswählen, bewegen und in der Größe ändern. Doppelklick bearbeitet Text.</translation>
    </message>
    <message>
        <source>Click to select, drag handles to resize, double-click text to edit. Right-click for arrange &amp; duplicate.</source>
        <translation>Klicken wählt aus, Griffe ändern die Größe, Doppelklick bearbeitet Text. Rechtsklick zum Anordnen und Duplizieren.</translation>
    </message>
    <message>
        <source>Arrow</source>
        <translation>Pfeil</translation>
    </message>
    <message>
        <source>Point at something important. Choose tapered, thin, double or curved.</source>
        <translation>Auf Wichtiges zeigen: spitz, dünn, doppelt oder gebogen.</translation>
    </message>
    <message>
        <source>Drag to draw an arrow. Hold ⇧ to snap to 45°. Pick a style above.</source>
        <translation>Ziehen zeichnet einen Pfeil. Umschalt rastet bei 45° ein. Stil oben wählen.</translation>
    </message>
    <message>
        <source>Box</source>
        <translation>Rechteck</translation>
    </message>
    <message>
        <source>Frame an area with a box — outline, tinted or solid.</source>
        <translation>Einen Bereich einrahmen — als Umriss, getönt oder gefüllt.</translation>
    </message>
    <message>
        <source>Drag to draw a box. Hold ⇧ for a square.</source>
        <translation>Ziehen zeichnet ein Rechteck. Umschalt ergibt ein Quadrat.</translation>
    </message>
    <message>
        <source>Oval</source>
        <translation>Oval</translation>
    </message>
    <message>
        <source>Circle something with an oval — outline, tinted or solid.</source>
        <translation>Etwas mit einem Oval umkreisen — als Umriss, getönt oder gefüllt.</translation>
    </message>
    <message>
        <source>Drag to draw an oval. Hold ⇧ for a circle.</source>
        <translation>Ziehen zeichnet ein Oval. Umschalt ergibt einen Kreis.</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <source>Draw a straight line, solid or dashed.</source>
        <translation>Eine gerade Linie zeichnen, durchgezogen oder gestrichelt.</translation>
    </message>
    <message>
        <source>Drag to draw a line. Hold ⇧ to snap to 45°.</source>
        <translation>Ziehen zeichnet eine Linie. Umschalt rastet bei 45° ein.</translation>
    </message>
    <message>
        <source>Pen</source>
        <translation>Stift</translation>
    </message>
    <message>
        <source>Draw freehand, like a marker.</source>
        <translation>Freihand zeichnen wie mit einem Filzstift.</translation>
    </message>
    <message>
        <source>Draw freehand by dragging.</source>
        <translation>Ziehen zeichnet freihand.</translation>
    </message>
    <message>
        <source>Highlight</source>
        <translation>Marker</translation>
    </message>
    <message>
        <source>Mark text with a see-through highlighter.</source>
        <translation>Text mit einem durchscheinenden Marker hervorheben.</translation>
    </message>
    <message>
        <source>Drag across text to highlight it.</source>
        <translation>Über Text ziehen, um ihn hervorzuheben.</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Add a caption. Plain text or a label with a colored box.</source>
        <translation>Eine Beschriftung hinzufügen: schlichter Text oder ein Etikett auf Farbe.</translation>
    </message>
    <message>
        <source>Click where the text should go, type, then press Return.</source>
        <translation>Klicken, wo der Text stehen soll, tippen, dann Eingabe drücken.</translation>
    </message>
    <message>
        <source>Callout</source>
        <translation>Sprechblase</translation>
    </message>
    <message>
        <source>Add a speech bubble with text and a tail you can aim.</source>
        <translation>Eine Sprechblase mit Text und beweglicher Spitze hinzufügen.</translation>
    </message>
    <message>
        <source>Drag to draw a speech bubble, then type. Drag the tail handle to point it.</source>
        <translation>Ziehen zeichnet eine Sprechblase, dann tippen. Der Griff der Spitze richtet sie aus.</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Number the steps of a process (1 2 3 or A B C).</source>
        <translation>Die Schritte eines Ablaufs nummerieren (1 2 3 oder A B C).</translation>
    </message>
    <message>
        <source>Click to drop numbered steps — they count up automatically.</source>
        <translation>Klicken setzt nummerierte Schritte — sie zählen von selbst weiter.</translation>
    </message>
    <message>
        <source>Stamp</source>
        <translation>Stempel</translation>
    </message>
    <message>
        <source>Drop a symbol, emoji or keyboard key, like ✓, ⚠️ or ⌘.</source>
        <translation>Ein Symbol, Emoji oder eine Taste setzen, etwa ✓, ⚠️ oder Strg.</translation>
    </message>
    <message>
        <source>Choose a stamp above, then click to place it (or drag to size it).</source>
        <translation>Oben einen Stempel wählen, dann klicken (oder aufziehen).</translation>
    </message>
    <message>
        <source>Blur</source>
        <translation>Verpixeln</translation>
    </message>
    <message>
        <source>Hide private details like names, emails or numbers.</source>
        <translation>Privates wie Namen, Adressen oder Nummern verbergen.</translation>
    </message>
    <message>
        <source>Drag over anything private to pixelate it.</source>
        <translation>Über Privates ziehen, um es zu verpixeln.</translation>
    </message>
    <message>
        <source>Spotlight</source>
        <translation>Scheinwerfer</translation>
    </message>
    <message>
        <source>Dim everything except the area you drag.</source>
        <translation>Alles außer dem aufgezogenen Bereich abdunkeln.</translation>
    </message>
    <message>
        <source>Drag around what matters — everything else is dimmed.</source>
        <translation>Um das Wichtige ziehen — alles andere wird abgedunkelt.</translation>
    </message>
    <message>
        <source>Magnify</source>
        <translation>Lupe</translation>
    </message>
    <message>
        <source>Add a 2× magnifier bubble to show fine detail.</source>
        <translation>Eine 2×-Lupe für feine Einzelheiten hinzufügen.</translation>
    </message>
    <message>
        <source>Drag to add a magnifier bubble that zooms in 2×.</source>
        <translation>Ziehen fügt eine Lupe hinzu, die 2× vergrößert.</translation>
    </message>
    <message>
        <source>Crop</source>
        <translation>Zuschneiden</translation>
    </message>
    <message>
        <source>Keep only the area you drag.</source>
        <translation>Nur den aufgezogenen Bereich behalten.</translation>
    </message>
    <message>
        <source>Drag to choose the area to keep. ⌘Z undoes it.</source>
        <translation>Den Bereich aufziehen, der bleiben soll. Strg+Z nimmt es zurück.</translation>
    </message>
    <message>
        <source>Cut Out</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Remove a strip from the middle and join the rest with a torn edge.</source>
        <translation>Einen Streifen aus der Mitte entfernen und den Rest mit Risskante verbinden.</translation>
    </message>
    <message>
        <source>Drag across the part to remove — the image closes the gap with a torn edge.</source>
        <translation>Über den Teil ziehen, der weg soll — das Bild schließt die Lücke mit einer Risskante.</translation>
    </message>
    <message>
        <source>Measure</source>
        <translation>Messen</translation>
    </message>
    <message>
        <source>Measure distances in pixels — handy for checking spacing in designs.</source>
        <translation>Abstände in Pixeln messen — praktisch für Entwürfe.</translation>
    </message>
    <message>
        <source>Drag between two points to measure them. Hold ⇧ to snap to 45°.</source>
        <translation>Zwischen zwei Punkten ziehen, um zu messen. Umschalt rastet bei 45° ein.</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>A pasted image you can move and resize.</source>
        <translation>Ein eingefügtes Bild, beweglich und in der Größe änderbar.</translation>
    </message>
    <message>
        <source>Pasted image. Drag to move, drag handles to resize.</source>
        <translation>Eingefügtes Bild. Ziehen bewegt es, Griffe ändern die Größe.</translation>
    </message>
    <message>
        <source>Tapered</source>
        <translation>Spitz</translation>
    </message>
    <message>
        <source>Thin</source>
        <translation>Dünn</translation>
    </message>
    <message>
        <source>Double</source>
        <translation>Doppelt</translation>
    </message>
    <message>
        <source>Curved</source>
        <translation>Gebogen</translation>
    </message>
    <message>
        <source>Outline</source>
        <translation>Umriss</translation>
    </message>
    <message>
        <source>Tinted</source>
        <translation>Getönt</translation>
    </message>
    <message>
        <source>Solid</source>
        <translation>Gefüllt</translation>
    </message>
    <message>
        <source>Dashed</source>
        <translation>Gestrichelt</translation>
    </message>
    <message>
        <source>Plain</source>
        <translation>Schlicht</translation>
    </message>
    <message>
        <source>Label</source>
        <translation>Etikett</translation>
    </message>
    <message>
        <source>Filled</source>
        <translation>Gefüllt</translation>
    </message>
    <message>
        <source>1 2 3</source>
        <translation>1 2 3</translation>
    </message>
    <message>
        <source>A B C</source>
        <translation>A B C</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>Zeilen</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Spalten</translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1.</source>
        <translation>%1 konnte nicht geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>EditorTexts</name>
    <message>
        <source>check mark</source>
        <translation>Häkchen</translation>
    </message>
    <message>
        <source>cross</source>
        <translation>Kreuz</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>question mark</source>
        <translation>Fragezeichen</translation>
    </message>
    <message>
        <source>information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>star</source>
        <translation>Stern</translation>
    </message>
    <message>
        <source>heart</source>
        <translation>Herz</translation>
    </message>
    <message>
        <source>thumbs up</source>
        <translation>Daumen hoch</translation>
    </message>
    <message>
        <source>thumbs down</source>
        <translation>Daumen runter</translation>
    </message>
    <message>
        <source>light bulb</source>
        <translation>Glühbirne</translation>
    </message>
    <message>
        <source>flag</source>
        <translation>Flagge</translation>
    </message>
    <message>
        <source>lock</source>
        <translation>Schloss</translation>
    </message>
    <message>
        <source>lightning bolt</source>
        <translation>Blitz</translation>
    </message>
    <message>
        <source>bell</source>
        <translation>Glocke</translation>
    </message>
    <message>
        <source>pointer</source>
        <translation>Mauszeiger</translation>
    </message>
    <message>
        <source>clicking pointer</source>
        <translation>klickender Mauszeiger</translation>
    </message>
    <message>
        <source>pointing hand</source>
        <translation>zeigende Hand</translation>
    </message>
    <message>
        <source>arrow up</source>
        <translation>Pfeil nach oben</translation>
    </message>
    <message>
        <source>arrow down</source>
        <translation>Pfeil nach unten</translation>
    </message>
    <message>
        <source>arrow left</source>
        <translation>Pfeil nach links</translation>
    </message>
    <message>
        <source>arrow right</source>
        <translation>Pfeil nach rechts</translation>
    </message>
    <message>
        <source>%1 key</source>
        <translation>Taste %1</translation>
    </message>
    <message>
        <source>black</source>
        <translation>schwarz</translation>
    </message>
    <message>
        <source>white</source>
        <translation>weiß</translation>
    </message>
    <message>
        <source>light gray</source>
        <translation>hellgrau</translation>
    </message>
    <message>
        <source>gray</source>
        <translation>grau</translation>
    </message>
    <message>
        <source>dark gray</source>
        <translation>dunkelgrau</translation>
    </message>
    <message>
        <source>red</source>
        <translation>rot</translation>
    </message>
    <message>
        <source>orange</source>
        <translation>orange</translation>
    </message>
    <message>
        <source>yellow</source>
        <translation>gelb</translation>
    </message>
    <message>
        <source>green</source>
        <translation>grün</translation>
    </message>
    <message>
        <source>cyan</source>
        <translation>türkis</translation>
    </message>
    <message>
        <source>blue</source>
        <translation>blau</translation>
    </message>
    <message>
        <source>purple</source>
        <translation>violett</translation>
    </message>
    <message>
        <source>pink</source>
        <translation>rosa</translation>
    </message>
    <message>
        <source>brown</source>
        <translation>braun</translation>
    </message>
    <message>
        <source>dark %1</source>
        <translation>dunkel%1</translation>
    </message>
    <message>
        <source>light %1</source>
        <translation>hell%1</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>leer</translation>
    </message>
    <message>
        <source>Step %1, %2</source>
        <translation>Schritt %1, %2</translation>
    </message>
    <message>
        <source>Stamp %1</source>
        <translation>Stempel %1</translation>
    </message>
    <message>
        <source>Measurement %1</source>
        <translation>Maß %1</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Picked %1</source>
        <translation>%1 aufgenommen</translation>
    </message>
    <message numerus="yes">
        <source>Capture, %1 by %2 pixels, %n object(s)</source>
        <translation>
            <numerusform>Aufnahme, %1 mal %2 Pixel, %n Objekt</numerusform>
            <numerusform>Aufnahme, %1 mal %2 Pixel, %n Objekte</numerusform>
        </translation>
    </message>
    <message>
        <source>. Tab moves between objects.</source>
        <translation>. Tabulator wechselt zwischen Objekten.</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Command palette</source>
        <translation>Befehlspalette</translation>
    </message>
    <message>
        <source>Type a command…</source>
        <translation>Befehl eingeben …</translation>
    </message>
    <message>
        <source>No matching commands</source>
        <translation>Keine passenden Befehle</translation>
    </message>
    <message>
        <source>No text found in that area</source>
        <translation>In diesem Bereich wurde kein Text gefunden</translation>
    </message>
    <message>
        <source>No text found</source>
        <translation>Kein Text gefunden</translation>
    </message>
    <message>
        <source>Copied %1 line of text</source>
        <translation>%1 Zeile Text kopiert</translation>
    </message>
    <message>
        <source>Copied %1 lines of text</source>
        <translation>%1 Zeilen Text kopiert</translation>
    </message>
    <message>
        <source>Renamed to “%1”</source>
        <translation>In „%1“ umbenannt</translation>
    </message>
    <message>
        <source>Suggested Name</source>
        <translation>Vorgeschlagener Name</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>%1 gesichert</translation>
    </message>
    <message>
        <source>Step updated in your guide</source>
        <translation>Schritt in der Anleitung aktualisiert</translation>
    </message>
    <message>
        <source>Capture</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Sichern unter</translation>
    </message>
    <message>
        <source>JPEG image (*.jpg *.jpeg)</source>
        <translation>JPEG-Bild (*.jpg *.jpeg)</translation>
    </message>
    <message>
        <source>HEIC image (*.heic)</source>
        <translation>HEIC-Bild (*.heic)</translation>
    </message>
    <message>
        <source>PNG image (*.png)</source>
        <translation>PNG-Bild (*.png)</translation>
    </message>
    <message>
        <source>Pictures are saved as PNG, JPEG or HEIC.</source>
        <translation>Bilder werden als PNG, JPEG oder HEIC gesichert.</translation>
    </message>
    <message>
        <source>%1 can’t be saved.</source>
        <translation>%1 kann nicht gesichert werden.</translation>
    </message>
    <message>
        <source>The image could not be copied.</source>
        <translation>Das Bild konnte nicht kopiert werden.</translation>
    </message>
    <message>
        <source>Image copied to clipboard</source>
        <translation>Bild in die Zwischenablage kopiert</translation>
    </message>
    <message>
        <source>Image file copied to clipboard</source>
        <translation>Bilddatei in die Zwischenablage kopiert</translation>
    </message>
    <message>
        <source>Copy File</source>
        <translation>Datei kopieren</translation>
    </message>
    <message>
        <source>Send by Email…</source>
        <translation>Per E-Mail senden …</translation>
    </message>
    <message>
        <source>Open in Another Program</source>
        <translation>In einem anderen Programm öffnen</translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation>In der Dateiverwaltung zeigen</translation>
    </message>
    <message>
        <source>Link copied: %1</source>
        <translation>Link kopiert: %1</translation>
    </message>
    <message>
        <source>Your unsaved edits are back. Save to keep them.</source>
        <translation>Ihre ungesicherten Änderungen sind wieder da. Sichern behält sie.</translation>
    </message>
    <message>
        <source>Your unsaved picture is back. Save to keep it.</source>
        <translation>Ihr ungesichertes Bild ist wieder da. Sichern behält es.</translation>
    </message>
    <message>
        <source>Discard Edits</source>
        <translation>Änderungen verwerfen</translation>
    </message>
    <message>
        <source>Discard Picture</source>
        <translation>Bild verwerfen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Unsaved edits can’t be kept: %1</source>
        <translation>Ungesicherte Änderungen können nicht behalten werden: %1</translation>
    </message>
    <message>
        <source>Unsaved Pictures</source>
        <translation>Ungesicherte Bilder</translation>
    </message>
    <message numerus="yes">
        <source>%n picture(s) were never saved</source>
        <translation>
            <numerusform>%n Bild wurde nie gesichert</numerusform>
            <numerusform>%n Bilder wurden nie gesichert</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy Image</source>
        <translation>Bild kopieren</translation>
    </message>
    <message>
        <source>Copy the finished image, with effects, to paste anywhere.</source>
        <translation>Das fertige Bild mit Effekten kopieren, um es überall einzufügen.</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Sichern</translation>
    </message>
    <message>
        <source>Save to your Library. Objects stay editable when you reopen it.</source>
        <translation>In der Bibliothek sichern. Objekte bleiben beim nächsten Öffnen bearbeitbar.</translation>
    </message>
    <message>
        <source>Save As…</source>
        <translation>Sichern unter …</translation>
    </message>
    <message>
        <source>Share…</source>
        <translation>Teilen …</translation>
    </message>
    <message>
        <source>Upload &amp; Copy Link</source>
        <translation>Hochladen &amp; Link kopieren</translation>
    </message>
    <message>
        <source>Pin</source>
        <translation>Anheften</translation>
    </message>
    <message>
        <source>Pin to Screen</source>
        <translation>An den Bildschirm heften</translation>
    </message>
    <message>
        <source>Float this image above all windows as a reference while you work.</source>
        <translation>Dieses Bild als Vorlage über allen Fenstern schweben lassen.</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Take back the last change.</source>
        <translation>Die letzte Änderung zurücknehmen.</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Bring back the change you just undid.</source>
        <translation>Die eben zurückgenommene Änderung wiederholen.</translation>
    </message>
    <message>
        <source>Fit to Window</source>
        <translation>An Fenster anpassen</translation>
    </message>
    <message>
        <source>Zoom to Fit</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <source>Actual Size (100%)</source>
        <translation>Originalgröße (100 %)</translation>
    </message>
    <message>
        <source>Gradient Backdrop</source>
        <translation>Verlaufshintergrund</translation>
    </message>
    <message>
        <source>Toggle Gradient Backdrop</source>
        <translation>Verlaufshintergrund ein/aus</translation>
    </message>
    <message>
        <source>Border</source>
        <translation>Rahmen</translation>
    </message>
    <message>
        <source>Toggle Border</source>
        <translation>Rahmen ein/aus</translation>
    </message>
    <message>
        <source>Drop Shadow</source>
        <translation>Schatten</translation>
    </message>
    <message>
        <source>Toggle Drop Shadow</source>
        <translation>Schatten ein/aus</translation>
    </message>
    <message>
        <source>Rounded Corners</source>
        <translation>Runde Ecken</translation>
    </message>
    <message>
        <source>Toggle Rounded Corners</source>
        <translation>Runde Ecken ein/aus</translation>
    </message>
    <message>
        <source>Emails, Numbers &amp; API Keys</source>
        <translation>E-Mails, Nummern &amp; API-Schlüssel</translation>
    </message>
    <message>
        <source>Redact Emails, Numbers &amp; Keys</source>
        <translation>E-Mails, Nummern &amp; Schlüssel schwärzen</translation>
    </message>
    <message>
        <source>All Text</source>
        <translation>Allen Text</translation>
    </message>
    <message>
        <source>Redact All Text</source>
        <translation>Allen Text schwärzen</translation>
    </message>
    <message>
        <source>Faces</source>
        <translation>Gesichter</translation>
    </message>
    <message>
        <source>Blur Faces</source>
        <translation>Gesichter verpixeln</translation>
    </message>
    <message>
        <source>Copy All Text from Image</source>
        <translation>Allen Text des Bildes kopieren</translation>
    </message>
    <message>
        <source>Copy Text from Area…</source>
        <translation>Text eines Bereichs kopieren …</translation>
    </message>
    <message>
        <source>Eyedropper</source>
        <translation>Pipette</translation>
    </message>
    <message>
        <source>Pick Color from Image</source>
        <translation>Farbe aus dem Bild aufnehmen</translation>
    </message>
    <message>
        <source>Click this, then click the image to pick up one of its colors.</source>
        <translation>Hier klicken, dann im Bild, um eine seiner Farben aufzunehmen.</translation>
    </message>
    <message>
        <source>Describe</source>
        <translation>Beschreiben</translation>
    </message>
    <message>
        <source>AI: Describe</source>
        <translation>KI: Beschreiben</translation>
    </message>
    <message>
        <source>Step-by-Step Instructions</source>
        <translation>Schritt-für-Schritt-Anleitung</translation>
    </message>
    <message>
        <source>AI: Step-by-Step Instructions</source>
        <translation>KI: Schritt-für-Schritt-Anleitung</translation>
    </message>
    <message>
        <source>Alt Text</source>
        <translation>Alternativtext</translation>
    </message>
    <message>
        <source>AI: Alt Text</source>
        <translation>KI: Alternativtext</translation>
    </message>
    <message>
        <source>Rename with AI</source>
        <translation>Mit KI umbenennen</translation>
    </message>
    <message>
        <source>AI: Rename</source>
        <translation>KI: Umbenennen</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplizieren</translation>
    </message>
    <message>
        <source>Duplicate Object</source>
        <translation>Objekt duplizieren</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Delete Object</source>
        <translation>Objekt löschen</translation>
    </message>
    <message>
        <source>Bring to Front</source>
        <translation>Nach vorn</translation>
    </message>
    <message>
        <source>Send to Back</source>
        <translation>Nach hinten</translation>
    </message>
    <message>
        <source>Drag Out</source>
        <translation>Herausziehen</translation>
    </message>
    <message>
        <source>Drag this into Mail, Slack, Finder or any app to drop the finished image.</source>
        <translation>In E-Mail, Chat, Dateiverwaltung oder ein anderes Programm ziehen, um das fertige Bild abzulegen.</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Edit Text</source>
        <translation>Text bearbeiten</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>All Commands</source>
        <translation>Alle Befehle</translation>
    </message>
    <message>
        <source>Effects</source>
        <translation>Effekte</translation>
    </message>
    <message>
        <source>Add a gradient backdrop, border, drop shadow or rounded corners to the finished image.</source>
        <translation>Dem fertigen Bild Verlaufshintergrund, Rahmen, Schatten oder runde Ecken geben.</translation>
    </message>
    <message>
        <source>Redact</source>
        <translation>Schwärzen</translation>
    </message>
    <message>
        <source>Automatically blur emails, numbers, API keys, all text or faces. Review each blur afterwards.</source>
        <translation>E-Mails, Nummern, API-Schlüssel, allen Text oder Gesichter selbsttätig verpixeln. Danach bitte jede Stelle prüfen.</translation>
    </message>
    <message>
        <source>AI</source>
        <translation>KI</translation>
    </message>
    <message>
        <source>Have Claude describe the image, write step-by-step instructions or alt text, or name it.</source>
        <translation>Claude das Bild beschreiben, eine Anleitung oder einen Alternativtext schreiben oder es benennen lassen.</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>Share, upload and copy a link, or Save As a new file.</source>
        <translation>Teilen, hochladen und Link kopieren oder als neue Datei sichern.</translation>
    </message>
    <message>
        <source>Presets</source>
        <translation>Vorlagen</translation>
    </message>
    <message>
        <source>Apply a saved tool, color and style in one click — or save your own.</source>
        <translation>Werkzeug, Farbe und Stil mit einem Klick anwenden — oder eigene sichern.</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Pinch or ⌘-scroll on the image. Hold Space and drag to move around. ⌘0 fits, ⌘1 is 100%.</source>
        <translation>Im Bild mit Strg scrollen. Leertaste halten und ziehen verschiebt. Strg+0 passt ein, Strg+1 ist 100 %.</translation>
    </message>
    <message>
        <source>Untitled Capture</source>
        <translation>Unbenannte Aufnahme</translation>
    </message>
    <message>
        <source>The picture could not be written to a temporary file.</source>
        <translation>Das Bild konnte nicht in eine temporäre Datei geschrieben werden.</translation>
    </message>
    <message>
        <source>Generated by Claude — check before sharing.</source>
        <translation>Von Claude erzeugt — vor dem Teilen prüfen.</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Save Style Preset</source>
        <translation>Stilvorlage sichern</translation>
    </message>
    <message>
        <source>Saves the current tool (%1), color, size and style.</source>
        <translation>Sichert das aktuelle Werkzeug (%1), Farbe, Größe und Stil.</translation>
    </message>
    <message>
        <source>My %1</source>
        <translation>Mein Stil: %1</translation>
    </message>
    <message>
        <source>Name of the preset</source>
        <translation>Name der Vorlage</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Saved preset “%1”</source>
        <translation>Vorlage „%1“ gesichert</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Something went wrong</source>
        <translation>Etwas ist schiefgegangen</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Einstellungen öffnen</translation>
    </message>
    <message>
        <source>Backdrop Style</source>
        <translation>Hintergrundstil</translation>
    </message>
    <message>
        <source>Border Color</source>
        <translation>Rahmenfarbe</translation>
    </message>
    <message>
        <source>Unsaved edits of an earlier state of this picture were set aside</source>
        <translation>Ungesicherte Änderungen eines früheren Standes dieses Bildes wurden beiseitegelegt</translation>
    </message>
    <message>
        <source>%1 Tool</source>
        <translation>Werkzeug %1</translation>
    </message>
    <message>
        <source>Text of the object</source>
        <translation>Text des Objekts</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Rounded</source>
        <translation>Gerundet</translation>
    </message>
    <message>
        <source>Serif</source>
        <translation>Serif</translation>
    </message>
    <message>
        <source>Mono</source>
        <translation>Mono</translation>
    </message>
    <message>
        <source>Marker</source>
        <translation>Filzstift</translation>
    </message>
    <message>
        <source>Selected %1</source>
        <translation>Ausgewählt: %1</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>Orange</source>
        <translation>Orange</translation>
    </message>
    <message>
        <source>Yellow</source>
        <translation>Gelb</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Purple</source>
        <translation>Violett</translation>
    </message>
    <message>
        <source>Black</source>
        <translation>Schwarz</translation>
    </message>
    <message>
        <source>White</source>
        <translation>Weiß</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Nothing selected — click an object to change it</source>
        <translation>Nichts ausgewählt — ein Objekt anklicken, um es zu ändern</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Schrift</translation>
    </message>
    <message>
        <source>Typeface for text and callouts.</source>
        <translation>Schriftart für Text und Sprechblasen.</translation>
    </message>
    <message>
        <source>Choose Stamp</source>
        <translation>Stempel wählen</translation>
    </message>
    <message>
        <source>Pick a symbol, emoji or keyboard key to place on the image.</source>
        <translation>Ein Symbol, Emoji oder eine Taste für das Bild wählen.</translation>
    </message>
    <message>
        <source>More Colors</source>
        <translation>Weitere Farben</translation>
    </message>
    <message>
        <source>Open the color picker to choose any color.</source>
        <translation>Die Farbauswahl für beliebige Farben öffnen.</translation>
    </message>
    <message>
        <source>Save Current Style as Preset…</source>
        <translation>Aktuellen Stil als Vorlage sichern …</translation>
    </message>
    <message>
        <source>Delete Preset</source>
        <translation>Vorlage löschen</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Text size.</source>
        <translation>Textgröße.</translation>
    </message>
    <message>
        <source>Line thickness.</source>
        <translation>Linienstärke.</translation>
    </message>
    <message>
        <source>Style</source>
        <translation>Stil</translation>
    </message>
    <message>
        <source>Style for new %1 objects and the one selected.</source>
        <translation>Stil für neue Objekte (%1) und das ausgewählte.</translation>
    </message>
    <message numerus="yes">
        <source>Redacted %n area(s) — review them, ⌘Z to undo</source>
        <translation>
            <numerusform>%n Bereich geschwärzt — bitte prüfen, Strg+Z nimmt zurück</numerusform>
            <numerusform>%n Bereiche geschwärzt — bitte prüfen, Strg+Z nimmt zurück</numerusform>
        </translation>
    </message>
    <message>
        <source>No faces found</source>
        <translation>Keine Gesichter gefunden</translation>
    </message>
    <message>
        <source>Nothing to redact</source>
        <translation>Nichts zu schwärzen</translation>
    </message>
    <message>
        <source>Symbols</source>
        <translation>Symbole</translation>
    </message>
    <message>
        <source>Emoji</source>
        <translation>Emoji</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Working…</source>
        <translation>In Arbeit …</translation>
    </message>
    <message>
        <source>Drag over text in the image to copy it · Esc to cancel</source>
        <translation>Über Text im Bild ziehen, um ihn zu kopieren · Esc bricht ab</translation>
    </message>
    <message>
        <source>Click anywhere on the image to pick its color · Esc to cancel</source>
        <translation>Im Bild klicken, um die Farbe aufzunehmen · Esc bricht ab</translation>
    </message>
    <message>
        <source>  ·  ⌘K for all commands</source>
        <translation>  ·  Strg+K für alle Befehle</translation>
    </message>
    <message numerus="yes">
        <source>%n object(s)</source>
        <translation>
            <numerusform>%n Objekt</numerusform>
            <numerusform>%n Objekte</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 × %2 px</source>
        <translation>%1 × %2 px</translation>
    </message>
    <message>
        <source>Fit · %1</source>
        <translation>Eingepasst · %1</translation>
    </message>
    <message>
        <source>Red Arrow</source>
        <translation>Roter Pfeil</translation>
    </message>
    <message>
        <source>Yellow Highlight</source>
        <translation>Gelber Marker</translation>
    </message>
    <message>
        <source>Blue Callout</source>
        <translation>Blaue Sprechblase</translation>
    </message>
    <message>
        <source>Purple Steps</source>
        <translation>Violette Schritte</translation>
    </message>
    <message>
        <source>Type, then Return</source>
        <translation>Tippen, dann Eingabe</translation>
    </message>
    <message>
        <source>Type your callout, then Return (⌥↩ for a new line)</source>
        <translation>Text tippen, dann Eingabe (Alt+Eingabe für eine neue Zeile)</translation>
    </message>
    <message>
        <source>Copy text in this area</source>
        <translation>Text in diesem Bereich kopieren</translation>
    </message>
    <message>
        <source>Remove %1 px</source>
        <translation>%1 px entfernen</translation>
    </message>
    <message>
        <source>Saved as %1: %2 files can’t hold a picture of this size</source>
        <translation>Als %1 gesichert: %2-Dateien fassen kein Bild dieser Größe</translation>
    </message>
    <message>
        <source>Uploaded: %1</source>
        <translation>Hochgeladen: %1</translation>
    </message>
    <message>
        <source>%1 by %2</source>
        <translation>%1 mal %2</translation>
    </message>
    <message>
        <source>%1, %2 at %3, %4</source>
        <translation>%1, %2 bei %3, %4</translation>
    </message>
    <message>
        <source>%1 by %2 at %3, %4</source>
        <translation>%1 mal %2 bei %3, %4</translation>
    </message>
    <message>
        <source>Columns %1 to %2</source>
        <translation>Spalten %1 bis %2</translation>
    </message>
    <message>
        <source>Rows %1 to %2</source>
        <translation>Zeilen %1 bis %2</translation>
    </message>
    <message>
        <source>F6 goes to the bars.</source>
        <translation>F6 führt zu den Leisten.</translation>
    </message>
    <message>
        <source>Return places: %1. Arrow keys move it, with Alt they size it.</source>
        <translation>Die Eingabetaste setzt ein Objekt: %1. Die Pfeiltasten bewegen es, mit Alt ändern sie seine Größe.</translation>
    </message>
    <message>
        <source>Go to Pinned Image</source>
        <translation>Zum angehefteten Bild</translation>
    </message>
    <message>
        <source>Tools and actions</source>
        <translation>Werkzeuge und Aktionen</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Kind of stamp</source>
        <translation>Art des Stempels</translation>
    </message>
    <message>
        <source>Stamps</source>
        <translation>Stempel</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Arrow keys move the point, ⇧ faster · Return picks its color · Esc cancels</source>
        <translation>Pfeiltasten bewegen den Punkt, ⇧ schneller · Eingabe übernimmt seine Farbe · Esc bricht ab</translation>
    </message>
    <message>
        <source>  ·  F6 for the bars</source>
        <translation>  ·  F6 für die Leisten</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
    <message>
        <source>Arrow keys move the frame, with Alt size it, ⇧ faster · Return takes it · Esc cancels</source>
        <translation>Pfeiltasten bewegen den Rahmen, mit Alt ändern sie die Größe, ⇧ schneller · Eingabe übernimmt · Esc bricht ab</translation>
    </message>
</context>
<context>
    <name>LibraryTexts</name>
    <message>
        <source>Side by Side</source>
        <translation>Nebeneinander</translation>
    </message>
    <message>
        <source>Stacked</source>
        <translation>Untereinander</translation>
    </message>
    <message>
        <source>Grid</source>
        <translation>Raster</translation>
    </message>
    <message>
        <source>%1 could not be encoded.</source>
        <translation>%1 konnte nicht kodiert werden.</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>Original</translation>
    </message>
    <message>
        <source>Fit Each Image</source>
        <translation>An jedes Bild anpassen</translation>
    </message>
    <message>
        <source>US Letter</source>
        <translation>US Letter</translation>
    </message>
    <message>
        <source>There are no pictures for the PDF.</source>
        <translation>Es gibt keine Bilder für das PDF.</translation>
    </message>
    <message>
        <source>The picture could not be copied.</source>
        <translation>Das Bild konnte nicht kopiert werden.</translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: the picture could not be encoded.</source>
        <translation>%1 konnte nicht geschrieben werden: Das Bild konnte nicht kodiert werden.</translation>
    </message>
    <message>
        <source>There is no file %1.</source>
        <translation>Es gibt keine Datei %1.</translation>
    </message>
    <message>
        <source>%1 is neither an image nor a film of the Library.</source>
        <translation>%1 ist weder ein Bild noch ein Film der Bibliothek.</translation>
    </message>
    <message>
        <source>Couldn&apos;t copy %1 into the Library: %2</source>
        <translation>%1 konnte nicht in die Bibliothek kopiert werden: %2</translation>
    </message>
    <message>
        <source>“%1” is no name for a file.</source>
        <translation>„%1“ ist kein Name für eine Datei.</translation>
    </message>
    <message>
        <source>%1 is not in the Library.</source>
        <translation>%1 ist nicht in der Bibliothek.</translation>
    </message>
    <message>
        <source>%1 is not the data of a Library that this version can read.</source>
        <translation>%1 sind keine Bibliotheksdaten, die diese Version lesen kann.</translation>
    </message>
    <message>
        <source>All Captures</source>
        <translation>Alle Aufnahmen</translation>
    </message>
    <message>
        <source>Screenshots</source>
        <translation>Bildschirmfotos</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>Filme</translation>
    </message>
    <message>
        <source>Favorites</source>
        <translation>Favoriten</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>Last 7 Days</source>
        <translation>Letzte 7 Tage</translation>
    </message>
    <message>
        <source>Last 30 Days</source>
        <translation>Letzte 30 Tage</translation>
    </message>
    <message>
        <source>Newest First</source>
        <translation>Neueste zuerst</translation>
    </message>
    <message>
        <source>Oldest First</source>
        <translation>Älteste zuerst</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>File Size</source>
        <translation>Dateigröße</translation>
    </message>
    <message>
        <source>Any Date</source>
        <translation>Beliebiges Datum</translation>
    </message>
    <message>
        <source>Past Week</source>
        <translation>Letzte Woche</translation>
    </message>
    <message>
        <source>Past Month</source>
        <translation>Letzter Monat</translation>
    </message>
    <message>
        <source>Past Year</source>
        <translation>Letztes Jahr</translation>
    </message>
    <message>
        <source>Indexing text in captures… %1 of %2</source>
        <translation>Text in Aufnahmen wird gelesen … %1 von %2</translation>
    </message>
    <message>
        <source>Collection</source>
        <translation>Sammlung</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <translation>Gestern</translation>
    </message>
    <message>
        <source>This Week</source>
        <translation>Diese Woche</translation>
    </message>
    <message>
        <source>The picture could not be copied: %1.</source>
        <translation>Das Bild konnte nicht kopiert werden: %1.</translation>
    </message>
    <message>
        <source>The picture could not be copied: there is no clipboard.</source>
        <translation>Das Bild konnte nicht kopiert werden: Es gibt keine Zwischenablage.</translation>
    </message>
    <message>
        <source>There is nothing to copy in %1.</source>
        <translation>In %1 gibt es nichts zu kopieren.</translation>
    </message>
    <message>
        <source>%1 is too large for a picture: %2.</source>
        <translation>%1 ist zu groß für ein Bild: %2.</translation>
    </message>
    <message>
        <source>The picture would be too large or too small to be made.</source>
        <translation>Das Bild würde zu groß oder zu klein.</translation>
    </message>
    <message>
        <source>Couldn&apos;t create the guide.</source>
        <translation>Die Anleitung konnte nicht erstellt werden.</translation>
    </message>
    <message>
        <source>%1 can only be had back from the Trash.</source>
        <translation>%1 lässt sich nur noch aus dem Papierkorb zurückholen.</translation>
    </message>
</context>
<context>
    <name>LibraryUiTexts</name>
    <message>
        <source>Copied</source>
        <translation>Kopiert</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Added to %1</source>
        <translation>Zu %1 hinzugefügt</translation>
    </message>
    <message>
        <source>New Collection</source>
        <translation>Neue Sammlung</translation>
    </message>
    <message>
        <source>Create</source>
        <translation>Anlegen</translation>
    </message>
    <message>
        <source>Rename Collection</source>
        <translation>Sammlung umbenennen</translation>
    </message>
    <message numerus="yes">
        <source>Moved %n item(s) to the Trash</source>
        <translation>
            <numerusform>%n Objekt in den Papierkorb gelegt</numerusform>
            <numerusform>%n Objekte in den Papierkorb gelegt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Imported %n item(s)</source>
        <translation>
            <numerusform>%n Objekt importiert</numerusform>
            <numerusform>%n Objekte importiert</numerusform>
        </translation>
    </message>
    <message>
        <source>None of these is a picture or a video</source>
        <translation>Nichts davon ist ein Bild oder ein Film</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <source>Images and videos</source>
        <translation>Bilder und Filme</translation>
    </message>
    <message>
        <source>New Collection…</source>
        <translation>Neue Sammlung …</translation>
    </message>
    <message>
        <source>Remove from This Collection</source>
        <translation>Aus dieser Sammlung nehmen</translation>
    </message>
    <message>
        <source>Open in Video Editor</source>
        <translation>Im Filmeditor öffnen</translation>
    </message>
    <message>
        <source>Open in Editor</source>
        <translation>Im Editor öffnen</translation>
    </message>
    <message>
        <source>Remove from Favorites</source>
        <translation>Aus den Favoriten nehmen</translation>
    </message>
    <message>
        <source>Add to Favorites</source>
        <translation>Zu den Favoriten</translation>
    </message>
    <message>
        <source>Pin to Screen</source>
        <translation>An den Bildschirm heften</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy Text</source>
        <translation>Text kopieren</translation>
    </message>
    <message>
        <source>Copy File</source>
        <translation>Datei kopieren</translation>
    </message>
    <message>
        <source>Rename…</source>
        <translation>Umbenennen …</translation>
    </message>
    <message>
        <source>Add to Collection</source>
        <translation>Zu einer Sammlung</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <translation>In der Dateiverwaltung zeigen</translation>
    </message>
    <message>
        <source>Move to Trash</source>
        <translation>In den Papierkorb</translation>
    </message>
    <message numerus="yes">
        <source>Move %n Items to Trash</source>
        <translation>
            <numerusform>%n Objekt in den Papierkorb</numerusform>
            <numerusform>%n Objekte in den Papierkorb</numerusform>
        </translation>
    </message>
    <message>
        <source>Captures</source>
        <translation>Aufnahmen</translation>
    </message>
    <message>
        <source>Favorite</source>
        <translation>Favorit</translation>
    </message>
    <message>
        <source>Pin to screen</source>
        <translation>An den Bildschirm heften</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Star it so it shows in Favorites and is never auto-deleted.</source>
        <translation>Mit Stern steht es unter den Favoriten und wird nie selbst gelöscht.</translation>
    </message>
    <message>
        <source>Float it above all windows as a reference.</source>
        <translation>Als Vorlage über allen Fenstern schweben lassen.</translation>
    </message>
    <message>
        <source>Copy the image to paste anywhere.</source>
        <translation>Das Bild kopieren, um es überall einzufügen.</translation>
    </message>
    <message>
        <source>Open it in the editor.</source>
        <translation>Im Editor öffnen.</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>Recent</source>
        <translation>Zuletzt</translation>
    </message>
    <message>
        <source>Collections</source>
        <translation>Sammlungen</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>Programme</translation>
    </message>
    <message>
        <source>Delete Collection</source>
        <translation>Sammlung löschen</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Ordner öffnen</translation>
    </message>
    <message>
        <source>Show your captures folder in Finder.</source>
        <translation>Den Ordner der Aufnahmen in der Dateiverwaltung zeigen.</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Show only captures from a time range.</source>
        <translation>Nur Aufnahmen aus einem Zeitraum zeigen.</translation>
    </message>
    <message>
        <source>Sort</source>
        <translation>Sortieren</translation>
    </message>
    <message>
        <source>Order by date, name or file size.</source>
        <translation>Nach Datum, Name oder Dateigröße ordnen.</translation>
    </message>
    <message>
        <source>Search names, apps and text in images</source>
        <translation>Namen, Programme und Text in Bildern suchen</translation>
    </message>
    <message>
        <source>Thumbnail Size</source>
        <translation>Größe der Vorschaubilder</translation>
    </message>
    <message>
        <source>Make the cards bigger or smaller.</source>
        <translation>Die Karten größer oder kleiner machen.</translation>
    </message>
    <message>
        <source>Add images or videos from elsewhere. You can also drop files onto the grid.</source>
        <translation>Bilder oder Filme von anderswo hinzufügen. Dateien lassen sich auch auf das Raster ziehen.</translation>
    </message>
    <message>
        <source>No Captures Yet</source>
        <translation>Noch keine Aufnahmen</translation>
    </message>
    <message>
        <source>Press ⌃⇧C or click the menu bar icon to capture. You can also drop images here.</source>
        <translation>Super+Umschalt+C drücken oder auf das Symbol in der Leiste klicken. Bilder lassen sich auch hierher ziehen.</translation>
    </message>
    <message>
        <source>Nothing Found</source>
        <translation>Nichts gefunden</translation>
    </message>
    <message>
        <source>Try another word, or another time range.</source>
        <translation>Ein anderes Wort oder einen anderen Zeitraum versuchen.</translation>
    </message>
    <message>
        <source>Collection</source>
        <translation>Sammlung</translation>
    </message>
    <message>
        <source>Add them to a collection, or start a new one.</source>
        <translation>Zu einer Sammlung hinzufügen oder eine neue beginnen.</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>Papierkorb</translation>
    </message>
    <message>
        <source>Move them to the Trash.</source>
        <translation>In den Papierkorb legen.</translation>
    </message>
    <message>
        <source>Deselect</source>
        <translation>Auswahl aufheben</translation>
    </message>
    <message>
        <source>Esc</source>
        <translation>Esc</translation>
    </message>
    <message numerus="yes">
        <source>%n items</source>
        <translation>
            <numerusform>%n Objekt</numerusform>
            <numerusform>%n Objekte</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n selected</source>
        <translation>
            <numerusform>%n ausgewählt</numerusform>
            <numerusform>%n ausgewählt</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Clean Up Storage</source>
        <translation>Speicher aufräumen</translation>
    </message>
    <message>
        <source>Duplicates</source>
        <translation>Duplikate</translation>
    </message>
    <message>
        <source>Large Files</source>
        <translation>Große Dateien</translation>
    </message>
    <message>
        <source>Auto-Delete</source>
        <translation>Automatisch löschen</translation>
    </message>
    <message>
        <source>Removed items go to the Trash.</source>
        <translation>Entfernte Objekte kommen in den Papierkorb.</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Looking for duplicates…</source>
        <translation>Duplikate werden gesucht …</translation>
    </message>
    <message>
        <source>No Duplicates</source>
        <translation>Keine Duplikate</translation>
    </message>
    <message>
        <source>Every capture looks unique.</source>
        <translation>Jede Aufnahme ist einzigartig.</translation>
    </message>
    <message>
        <source>Trash All Extras</source>
        <translation>Alle überzähligen löschen</translation>
    </message>
    <message numerus="yes">
        <source>%n group(s) of look-alike captures. The newest in each group is kept.</source>
        <translation>
            <numerusform>%n Gruppe ähnlicher Aufnahmen. Die neueste jeder Gruppe bleibt.</numerusform>
            <numerusform>%n Gruppen ähnlicher Aufnahmen. Die neueste jeder Gruppe bleibt.</numerusform>
        </translation>
    </message>
    <message>
        <source>…and %1 more</source>
        <translation>… und %1 weitere</translation>
    </message>
    <message>
        <source>Trash Extras</source>
        <translation>Überzählige löschen</translation>
    </message>
    <message>
        <source>Delete captures older than</source>
        <translation>Aufnahmen löschen, die älter sind als</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message>
        <source>30 days</source>
        <translation>30 Tage</translation>
    </message>
    <message>
        <source>90 days</source>
        <translation>90 Tage</translation>
    </message>
    <message>
        <source>1 year</source>
        <translation>1 Jahr</translation>
    </message>
    <message>
        <source>Runs each time Lumenpost starts. Favorites and anything in a collection are always kept.</source>
        <translation>Geschieht bei jedem Start von Lumenpost. Favoriten und alles in Sammlungen bleibt immer erhalten.</translation>
    </message>
    <message>
        <source>Run Now</source>
        <translation>Jetzt ausführen</translation>
    </message>
    <message numerus="yes">
        <source>Combine %n Capture(s)</source>
        <translation>
            <numerusform>%n Aufnahme zusammenfügen</numerusform>
            <numerusform>%n Aufnahmen zusammenfügen</numerusform>
        </translation>
    </message>
    <message>
        <source>Spacing</source>
        <translation>Abstand</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Layout</source>
        <translation>Anordnung</translation>
    </message>
    <message>
        <source>White</source>
        <translation>Weiß</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Transparent</source>
        <translation>Durchsichtig</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Create &amp; Open</source>
        <translation>Erstellen und öffnen</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>Original</translation>
    </message>
    <message>
        <source>Max %1 px</source>
        <translation>Höchstens %1 px</translation>
    </message>
    <message numerus="yes">
        <source>Export %n Item(s)</source>
        <translation>
            <numerusform>%n Objekt exportieren</numerusform>
            <numerusform>%n Objekte exportieren</numerusform>
        </translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Recordings are copied as-is.</source>
        <translation>Filme werden unverändert kopiert.</translation>
    </message>
    <message>
        <source>Choose Folder…</source>
        <translation>Ordner wählen …</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Export Here</source>
        <translation>Hierhin exportieren</translation>
    </message>
    <message numerus="yes">
        <source>Step Guide from %n Capture(s)</source>
        <translation>
            <numerusform>Anleitung aus %n Aufnahme</numerusform>
            <numerusform>Anleitung aus %n Aufnahmen</numerusform>
        </translation>
    </message>
    <message>
        <source>How To</source>
        <translation>So geht’s</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>File names</source>
        <translation>Dateinamen</translation>
    </message>
    <message>
        <source>AI-written (Claude)</source>
        <translation>Von der KI (Claude)</translation>
    </message>
    <message>
        <source>Add an Anthropic API key in Settings to use AI captions.</source>
        <translation>Für Bildtexte der KI wird ein Anthropic-API-Schlüssel gebraucht (Einstellungen).</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Step captions</source>
        <translation>Bildtexte</translation>
    </message>
    <message>
        <source>Steps follow the order shown in the Library. The guide opens in the editor so you can add arrows and callouts.</source>
        <translation>Die Schritte folgen der Reihenfolge in der Bibliothek. Die Anleitung öffnet sich im Editor, wo Pfeile und Hinweise hinzukommen können.</translation>
    </message>
    <message>
        <source>AI Description</source>
        <translation>Beschreibung der KI</translation>
    </message>
    <message>
        <source>Copy it to paste anywhere.</source>
        <translation>Kopiert es, um es anderswo einzufügen.</translation>
    </message>
    <message>
        <source>Pin</source>
        <translation>Anheften</translation>
    </message>
    <message>
        <source>Finder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Show the file in Finder.</source>
        <translation>Zeigt die Datei in der Dateiverwaltung.</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>Move it to the Trash.</source>
        <translation>Verschiebt es in den Papierkorb.</translation>
    </message>
    <message>
        <source>Text in Image</source>
        <translation>Text im Bild</translation>
    </message>
    <message>
        <source>No text found (or not indexed yet).</source>
        <translation>Kein Text gefunden (oder noch nicht gelesen).</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>Dimensions</source>
        <translation>Maße</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Layers</source>
        <translation>Ebenen</translation>
    </message>
    <message>
        <source>Editable</source>
        <translation>Bearbeitbar</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>Send by Email…</source>
        <translation>Per E-Mail senden …</translation>
    </message>
    <message>
        <source>Open in Another Program</source>
        <translation>In anderem Programm öffnen</translation>
    </message>
    <message>
        <source>There is no picture among these.</source>
        <translation>Darunter ist kein Bild.</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>Exportieren …</translation>
    </message>
    <message numerus="yes">
        <source>Rename %n Items…</source>
        <translation>
            <numerusform>%n Objekt umbenennen …</numerusform>
            <numerusform>%n Objekte umbenennen …</numerusform>
        </translation>
    </message>
    <message>
        <source>Combine into One Image…</source>
        <translation>Zu einem Bild zusammenfügen …</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>Informationen</translation>
    </message>
    <message>
        <source>No Selection</source>
        <translation>Nichts ausgewählt</translation>
    </message>
    <message>
        <source>Select a capture to see its details.
Space previews, Return opens.</source>
        <translation>Eine Aufnahme auswählen, um mehr über sie zu sehen.
Leertaste zeigt sie groß, Eingabe öffnet sie.</translation>
    </message>
    <message numerus="yes">
        <source>%n items selected</source>
        <translation>
            <numerusform>%n Objekt ausgewählt</numerusform>
            <numerusform>%n Objekte ausgewählt</numerusform>
        </translation>
    </message>
    <message>
        <source>Use the bar at the bottom to export, combine, rename or file them.</source>
        <translation>Die Leiste unten exportiert, fügt zusammen, benennt um und sortiert ein.</translation>
    </message>
    <message>
        <source>Sidebar</source>
        <translation>Seitenleiste</translation>
    </message>
    <message>
        <source>Show or hide what can be chosen from.</source>
        <translation>Zeigt oder verbirgt, woraus gewählt werden kann.</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
    <message>
        <source>Clean up storage, describe captures with AI, or open the folder.</source>
        <translation>Speicher aufräumen, Aufnahmen von der KI beschreiben lassen oder den Ordner öffnen.</translation>
    </message>
    <message>
        <source>Clean Up</source>
        <translation>Aufräumen</translation>
    </message>
    <message>
        <source>Describe Captures with AI</source>
        <translation>Aufnahmen von der KI beschreiben lassen</translation>
    </message>
    <message>
        <source>Open Captures Folder</source>
        <translation>Ordner der Aufnahmen öffnen</translation>
    </message>
    <message>
        <source>Show or hide details for the selected capture.</source>
        <translation>Zeigt oder verbirgt Näheres über die ausgewählte Aufnahme.</translation>
    </message>
    <message>
        <source>Find duplicates and large files, and set up auto-delete.</source>
        <translation>Findet Duplikate und große Dateien und löscht auf Wunsch von selbst.</translation>
    </message>
    <message>
        <source>File Names</source>
        <translation>Dateinamen</translation>
    </message>
    <message numerus="yes">
        <source>Exported %n item(s)</source>
        <translation>
            <numerusform>%n Objekt exportiert</numerusform>
            <numerusform>%n Objekte exportiert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n files could not be exported. %1</source>
        <translation>
            <numerusform>%n Datei konnte nicht exportiert werden. %1</numerusform>
            <numerusform>%n Dateien konnten nicht exportiert werden. %1</numerusform>
        </translation>
    </message>
    <message>
        <source>Writing caption %1 of %2…</source>
        <translation>Bildtext %1 von %2 wird geschrieben …</translation>
    </message>
    <message>
        <source>Couldn&apos;t write the PDF.</source>
        <translation>Das PDF konnte nicht geschrieben werden.</translation>
    </message>
    <message numerus="yes">
        <source>Combined %n Capture(s)</source>
        <translation>
            <numerusform>%n Aufnahme zusammengefügt</numerusform>
            <numerusform>%n Aufnahmen zusammengefügt</numerusform>
        </translation>
    </message>
    <message>
        <source>Writing step %1 of %2…</source>
        <translation>Schritt %1 von %2 wird geschrieben …</translation>
    </message>
    <message>
        <source>Step Guide</source>
        <translation>Anleitung</translation>
    </message>
    <message>
        <source>Couldn&apos;t create the guide.</source>
        <translation>Die Anleitung konnte nicht erstellt werden.</translation>
    </message>
    <message numerus="yes">
        <source>Renamed %n item(s)</source>
        <translation>
            <numerusform>%n Objekt umbenannt</numerusform>
            <numerusform>%n Objekte umbenannt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Moved %n old capture(s) to the Trash</source>
        <translation>
            <numerusform>%n alte Aufnahme in den Papierkorb verschoben</numerusform>
            <numerusform>%n alte Aufnahmen in den Papierkorb verschoben</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing old enough to remove</source>
        <translation>Nichts ist alt genug</translation>
    </message>
    <message>
        <source>This version can&apos;t be restored.</source>
        <translation>Diese Version lässt sich nicht wiederherstellen.</translation>
    </message>
    <message>
        <source>Add an Anthropic API key in Settings first</source>
        <translation>Zuerst in den Einstellungen einen Anthropic-API-Schlüssel eintragen</translation>
    </message>
    <message>
        <source>Starting…</source>
        <translation>Beginnt …</translation>
    </message>
    <message>
        <source>Describing %1 of %2…</source>
        <translation>%1 von %2 wird beschrieben …</translation>
    </message>
    <message numerus="yes">
        <source>Added AI descriptions to %n capture(s)</source>
        <translation>
            <numerusform>%n Aufnahme von der KI beschrieben</numerusform>
            <numerusform>%n Aufnahmen von der KI beschrieben</numerusform>
        </translation>
    </message>
    <message>
        <source>Everything is already described</source>
        <translation>Alles ist schon beschrieben</translation>
    </message>
    <message numerus="yes">
        <source>Export %n Page PDF</source>
        <translation>
            <numerusform>PDF mit %n Seite exportieren</numerusform>
            <numerusform>PDF mit %n Seiten exportieren</numerusform>
        </translation>
    </message>
    <message>
        <source>How-To Guide</source>
        <translation>Anleitung</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>Bildtexte</translation>
    </message>
    <message>
        <source>Page Size</source>
        <translation>Seitengröße</translation>
    </message>
    <message>
        <source>Pages follow the order shown in the Library.</source>
        <translation>Die Seiten folgen der Reihenfolge in der Bibliothek.</translation>
    </message>
    <message>
        <source>Create PDF…</source>
        <translation>PDF erstellen …</translation>
    </message>
    <message>
        <source>Create PDF</source>
        <translation>PDF erstellen</translation>
    </message>
    <message>
        <source>PDF</source>
        <translation>PDF</translation>
    </message>
    <message>
        <source>%1 can&apos;t be shown.</source>
        <translation>%1 kann nicht gezeigt werden.</translation>
    </message>
    <message>
        <source>←  →  to browse  ·  Space or Esc to close</source>
        <translation>←  →  blättern  ·  Leertaste oder Esc schließt</translation>
    </message>
    <message numerus="yes">
        <source>Rename %n Item(s)</source>
        <translation>
            <numerusform>%n Objekt umbenennen</numerusform>
            <numerusform>%n Objekte umbenennen</numerusform>
        </translation>
    </message>
    <message>
        <source>Pattern</source>
        <translation>Muster</translation>
    </message>
    <message>
        <source>Start numbering at</source>
        <translation>Zählen ab</translation>
    </message>
    <message>
        <source>Use {n} for a number, {date} for the capture date, {name} for the current name.</source>
        <translation>{n} steht für eine Nummer, {date} für das Datum der Aufnahme, {name} für den jetzigen Namen.</translation>
    </message>
    <message>
        <source>Save copies as PNG, JPG or HEIC, optionally resized.</source>
        <translation>Sichert Kopien als PNG, JPG oder HEIC, auf Wunsch verkleinert.</translation>
    </message>
    <message>
        <source>Make a PDF with one page per capture, with a title and captions.</source>
        <translation>Macht ein PDF mit einer Seite je Aufnahme, mit Titel und Bildtexten.</translation>
    </message>
    <message>
        <source>Combine</source>
        <translation>Zusammenfügen</translation>
    </message>
    <message>
        <source>Join captures side by side, stacked or in a grid.</source>
        <translation>Fügt Aufnahmen nebeneinander, untereinander oder im Raster zusammen.</translation>
    </message>
    <message>
        <source>Guide</source>
        <translation>Anleitung</translation>
    </message>
    <message>
        <source>Make one tall step-by-step guide image with a title, numbers and captions.</source>
        <translation>Macht ein hohes Bild Schritt für Schritt, mit Titel, Nummern und Bildtexten.</translation>
    </message>
    <message>
        <source>Rename them all with a pattern like “Bug {n}”.</source>
        <translation>Benennt alle nach einem Muster wie „Fehler {n}“ um.</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Bleibt</translation>
    </message>
    <message>
        <source>Extra</source>
        <translation>Überzählig</translation>
    </message>
    <message>
        <source>Less</source>
        <translation>Weniger</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Go back to an earlier save. The current version is kept too, so you can switch back.</source>
        <translation>Geht zu einem früheren Stand zurück. Der jetzige bleibt auch erhalten, sodass man zurückwechseln kann.</translation>
    </message>
    <message numerus="yes">
        <source>%n earlier version(s)</source>
        <translation>
            <numerusform>%n frühere Version</numerusform>
            <numerusform>%n frühere Versionen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Put %n item(s) back</source>
        <translation>
            <numerusform>%n Objekt zurückgelegt</numerusform>
            <numerusform>%n Objekte zurückgelegt</numerusform>
        </translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message numerus="yes">
        <source>%n picture(s) could not be read and were left out</source>
        <translation>
            <numerusform>%n Bild konnte nicht gelesen werden und fehlt</numerusform>
            <numerusform>%n Bilder konnten nicht gelesen werden und fehlen</numerusform>
        </translation>
    </message>
    <message>
        <source>P to play</source>
        <translation>P zum Abspielen</translation>
    </message>
    <message>
        <source>P to pause</source>
        <translation>P zum Anhalten</translation>
    </message>
</context>
<context>
    <name>PinsTexts</name>
    <message>
        <source>Copied</source>
        <translation>Kopiert</translation>
    </message>
    <message>
        <source>Pinned Image</source>
        <translation>Angeheftetes Bild</translation>
    </message>
    <message>
        <source>Pinned image</source>
        <translation>Angeheftetes Bild</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Open in Editor</source>
        <translation>Im Editor öffnen</translation>
    </message>
    <message>
        <source>Actual Size</source>
        <translation>Originalgröße</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Deckkraft</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Close All Pins</source>
        <translation>Alle angehefteten Bilder schließen</translation>
    </message>
    <message>
        <source>Arrow keys move it, with Alt they size it. Tab goes to the next one, Esc closes it.</source>
        <translation>Die Pfeiltasten bewegen es, mit Alt ändern sie seine Größe. Tab führt zum nächsten, Esc schließt es.</translation>
    </message>
    <message>
        <source>%1 by %2 at %3, %4</source>
        <translation>%1 mal %2 bei %3, %4</translation>
    </message>
</context>
<context>
    <name>PlatformTexts</name>
    <message>
        <source>“%1” could not be moved to the Trash.</source>
        <translation>„%1“ konnte nicht in den Papierkorb gelegt werden.</translation>
    </message>
    <message>
        <source>There is no file “%1”.</source>
        <translation>Es gibt keine Datei „%1“.</translation>
    </message>
    <message>
        <source>The file “%1” could not be removed.</source>
        <translation>Die Datei „%1“ konnte nicht entfernt werden.</translation>
    </message>
    <message>
        <source>Nothing can open “%1” here: install xdg-utils.</source>
        <translation>Nichts kann hier „%1“ öffnen: bitte xdg-utils installieren.</translation>
    </message>
    <message>
        <source>The password could not be stored in “%1”.</source>
        <translation>Das Passwort konnte nicht in „%1“ abgelegt werden.</translation>
    </message>
    <message>
        <source>There is no such password.</source>
        <translation>Dieses Passwort gibt es nicht.</translation>
    </message>
    <message>
        <source>The password store does not answer.</source>
        <translation>Der Passwortspeicher antwortet nicht.</translation>
    </message>
    <message>
        <source>The password store is locked: unlock it and try again.</source>
        <translation>Der Passwortspeicher ist gesperrt: bitte entsperren und erneut versuchen.</translation>
    </message>
    <message>
        <source>The screen is turned off for this start: unset LUMENPOST_PLATFORM to use it.</source>
        <translation>Der Bildschirm ist für diesen Start abgeschaltet: LUMENPOST_PLATFORM entfernen, um ihn zu benutzen.</translation>
    </message>
    <message>
        <source>There is no display: start Lumenpost in a desktop session, or set DISPLAY.</source>
        <translation>Es gibt keinen Bildschirm: Lumenpost in einer Desktop-Sitzung starten oder DISPLAY setzen.</translation>
    </message>
    <message>
        <source>The display “%1” can&apos;t be reached: check DISPLAY and that its desktop session runs.</source>
        <translation>Der Bildschirm „%1“ ist nicht erreichbar: DISPLAY prüfen und ob seine Desktop-Sitzung läuft.</translation>
    </message>
    <message>
        <source>This keyboard has no such key.</source>
        <translation>Diese Tastatur hat keine solche Taste.</translation>
    </message>
    <message>
        <source>Lumenpost uses this shortcut already.</source>
        <translation>Lumenpost benutzt dieses Tastenkürzel schon.</translation>
    </message>
    <message>
        <source>Another program has taken this shortcut.</source>
        <translation>Ein anderes Programm hat dieses Tastenkürzel belegt.</translation>
    </message>
    <message>
        <source>The picture could not be read from the screen.</source>
        <translation>Das Bild konnte nicht vom Bildschirm gelesen werden.</translation>
    </message>
    <message>
        <source>This display uses a colour depth of %1 bits, which can&apos;t be captured: set it to 24 bits.</source>
        <translation>Dieser Bildschirm hat eine Farbtiefe von %1 Bit, die nicht aufgenommen werden kann: bitte auf 24 Bit stellen.</translation>
    </message>
    <message>
        <source>That window is no longer available.</source>
        <translation>Dieses Fenster gibt es nicht mehr.</translation>
    </message>
    <message>
        <source>That display is no longer available.</source>
        <translation>Diesen Bildschirm gibt es nicht mehr.</translation>
    </message>
    <message>
        <source>The region is too large.</source>
        <translation>Der Bereich ist zu groß.</translation>
    </message>
    <message>
        <source>The display has gone away.</source>
        <translation>Der Bildschirm ist weg.</translation>
    </message>
    <message>
        <source>The region lies outside the screen.</source>
        <translation>Der Bereich liegt außerhalb des Bildschirms.</translation>
    </message>
    <message>
        <source>The screen could not be read without Lumenpost&apos;s own windows.</source>
        <translation>Der Bildschirm konnte nicht ohne Lumenposts eigene Fenster gelesen werden.</translation>
    </message>
    <message>
        <source>The window&apos;s picture is not kept by this display.</source>
        <translation>Das Bild des Fensters wird von diesem Bildschirm nicht bereitgehalten.</translation>
    </message>
    <message>
        <source>This display doesn&apos;t let programs turn the wheel: scroll by hand.</source>
        <translation>Dieser Bildschirm lässt Programme nicht das Mausrad drehen: bitte von Hand scrollen.</translation>
    </message>
    <message>
        <source>This X server lacks an extension (Composite, Render or XFixes): what lies over a window, Lumenpost&apos;s own windows too, is in its picture.</source>
        <translation>Diesem X-Server fehlt eine Erweiterung (Composite, Render oder XFixes): Was über einem Fenster liegt, auch Lumenposts eigene Fenster, ist in seinem Bild.</translation>
    </message>
    <message>
        <source>The region is empty or too large.</source>
        <translation>Der Bereich ist leer oder zu groß.</translation>
    </message>
    <message>
        <source>This display doesn&apos;t tell clicks in other programs: use “Add Step”.</source>
        <translation>Dieser Bildschirm meldet keine Klicks in anderen Programmen: „Schritt hinzufügen“ benutzen.</translation>
    </message>
    <message>
        <source>To free it: Settings › Keyboard › View and Customize Shortcuts.</source>
        <translation>Zum Freigeben: Einstellungen › Tastatur › Tastenkürzel ansehen und anpassen.</translation>
    </message>
    <message>
        <source>To free it: System Settings › Keyboard › Shortcuts.</source>
        <translation>Zum Freigeben: Systemeinstellungen › Tastatur › Kurzbefehle.</translation>
    </message>
    <message>
        <source>To free it: Settings › Keyboard › Application Shortcuts.</source>
        <translation>Zum Freigeben: Einstellungen › Tastatur › Tastenkürzel für Anwendungen.</translation>
    </message>
    <message>
        <source>To free it: the desktop&apos;s settings › Keyboard Shortcuts.</source>
        <translation>Zum Freigeben: Einstellungen des Desktops › Tastenkürzel.</translation>
    </message>
    <message>
        <source>To free it, remove it from the desktop&apos;s or the window manager&apos;s own shortcuts.</source>
        <translation>Zum Freigeben aus den Tastenkürzeln des Desktops oder der Fensterverwaltung entfernen.</translation>
    </message>
    <message>
        <source>The recording couldn&apos;t be finished.</source>
        <translation>Der Film konnte nicht fertiggestellt werden.</translation>
    </message>
    <message>
        <source>There is a file named %1 already.</source>
        <translation>Es gibt schon eine Datei namens %1.</translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: %2.</source>
        <translation>%1 konnte nicht geschrieben werden: %2.</translation>
    </message>
    <message>
        <source>The film couldn&apos;t be written: %1.</source>
        <translation>Der Film konnte nicht geschrieben werden: %1.</translation>
    </message>
    <message>
        <source>This machine&apos;s FFmpeg can&apos;t write films.</source>
        <translation>Das FFmpeg dieses Rechners kann keine Filme schreiben.</translation>
    </message>
    <message>
        <source>The film couldn&apos;t be encoded.</source>
        <translation>Der Film konnte nicht kodiert werden.</translation>
    </message>
    <message>
        <source>The film has no sound.</source>
        <translation>Der Film hat keinen Ton.</translation>
    </message>
    <message>
        <source>This film can&apos;t be played: %1.</source>
        <translation>Dieser Film kann nicht abgespielt werden: %1.</translation>
    </message>
    <message>
        <source>none of its pictures can be decoded</source>
        <translation>keines seiner Bilder kann dekodiert werden</translation>
    </message>
    <message>
        <source>There is not enough memory for the film&apos;s pictures.</source>
        <translation>Für die Bilder des Films reicht der Speicher nicht.</translation>
    </message>
    <message>
        <source>There is no file %1.</source>
        <translation>Es gibt keine Datei %1.</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>die Datei ist leer</translation>
    </message>
    <message>
        <source>it is damaged, or no film</source>
        <translation>sie ist beschädigt oder kein Film</translation>
    </message>
    <message>
        <source>it is damaged</source>
        <translation>sie ist beschädigt</translation>
    </message>
    <message>
        <source>there are no pictures in it</source>
        <translation>es sind keine Bilder darin</translation>
    </message>
    <message>
        <source>its pictures have no sensible size</source>
        <translation>seine Bilder haben keine sinnvolle Größe</translation>
    </message>
    <message>
        <source>it has no length</source>
        <translation>er hat keine Länge</translation>
    </message>
    <message>
        <source>its pictures are of a kind (%1) that this machine can&apos;t decode</source>
        <translation>seine Bilder sind von einer Art (%1), die dieser Rechner nicht dekodieren kann</translation>
    </message>
    <message>
        <source>its sound is of a kind (%1) that this machine can&apos;t decode</source>
        <translation>sein Ton ist von einer Art (%1), die dieser Rechner nicht dekodieren kann</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>Der Datenträger ist voll.</translation>
    </message>
    <message>
        <source>The film couldn&apos;t be written.</source>
        <translation>Der Film konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The film is too small.</source>
        <translation>Der Film ist zu klein.</translation>
    </message>
    <message>
        <source>There are no pictures in that part of the film.</source>
        <translation>In diesem Teil des Films gibt es keine Bilder.</translation>
    </message>
    <message>
        <source>There is no sound server in this session.</source>
        <translation>In dieser Sitzung läuft kein Tonserver.</translation>
    </message>
    <message>
        <source>Speech recognition isn&apos;t available for your language right now.</source>
        <translation>Für Ihre Sprache gibt es derzeit keine Spracherkennung.</translation>
    </message>
    <message>
        <source>The speech could not be recognised.</source>
        <translation>Das Gesprochene konnte nicht erkannt werden.</translation>
    </message>
    <message>
        <source>%1 refuses the connection.</source>
        <translation>%1 lehnt die Verbindung ab.</translation>
    </message>
    <message>
        <source>%1 can&apos;t be found; is this machine connected to a network?</source>
        <translation>%1 ist nicht zu finden; ist dieser Rechner mit einem Netz verbunden?</translation>
    </message>
    <message>
        <source>%1 didn&apos;t answer in time.</source>
        <translation>%1 hat nicht rechtzeitig geantwortet.</translation>
    </message>
    <message>
        <source>%1 closed the connection before its answer was complete.</source>
        <translation>%1 hat die Verbindung geschlossen, bevor die Antwort vollständig war.</translation>
    </message>
    <message>
        <source>No safe connection to %1 could be made.</source>
        <translation>Zu %1 konnte keine sichere Verbindung hergestellt werden.</translation>
    </message>
    <message>
        <source>The exchange with %1 failed: %2.</source>
        <translation>Der Austausch mit %1 ist fehlgeschlagen: %2.</translation>
    </message>
    <message>
        <source>A line break can&apos;t be part of “%1”.</source>
        <translation>Ein Zeilenumbruch kann nicht Teil von „%1“ sein.</translation>
    </message>
    <message>
        <source>The model for finding faces is missing; install Lumenpost again.</source>
        <translation>Das Modell zum Finden von Gesichtern fehlt; bitte Lumenpost neu installieren.</translation>
    </message>
    <message>
        <source>The model for finding faces can&apos;t be used; install Lumenpost again.</source>
        <translation>Das Modell zum Finden von Gesichtern ist unbrauchbar; bitte Lumenpost neu installieren.</translation>
    </message>
    <message>
        <source>No language data for reading text is installed; the package tesseract-ocr-eng has the one for English.</source>
        <translation>Es sind keine Sprachdaten zum Lesen von Text installiert; das Paket tesseract-ocr-deu enthält die für Deutsch.</translation>
    </message>
    <message>
        <source>The picture is too large to be read on this machine.</source>
        <translation>Das Bild ist zu groß, um auf diesem Rechner gelesen zu werden.</translation>
    </message>
    <message>
        <source>The text recognition data for “%1” can&apos;t be read.</source>
        <translation>Die Daten der Texterkennung für „%1“ sind nicht lesbar.</translation>
    </message>
    <message>
        <source>There is not enough memory for a film of this size.</source>
        <translation>Für einen Film dieser Größe reicht der Speicher nicht.</translation>
    </message>
    <message>
        <source>This display doesn&apos;t tell what is clicked and typed.</source>
        <translation>Dieser Bildschirm meldet nicht, was geklickt und getippt wird.</translation>
    </message>
    <message>
        <source>There are too many open files.</source>
        <translation>Es sind zu viele Dateien geöffnet.</translation>
    </message>
    <message>
        <source>This display doesn&apos;t tell its keyboard layout.</source>
        <translation>Dieser Bildschirm meldet seine Tastaturbelegung nicht.</translation>
    </message>
    <message>
        <source>There is no camera that can be used.</source>
        <translation>Es gibt keine Kamera, die benutzt werden kann.</translation>
    </message>
    <message>
        <source>Windows can&apos;t be shown in this Wayland session: install qt6-wayland.</source>
        <translation>In dieser Wayland-Sitzung können keine Fenster gezeigt werden: bitte qt6-wayland installieren.</translation>
    </message>
    <message>
        <source>The desktop refused a picture of the screen.</source>
        <translation>Der Desktop hat ein Bild des Bildschirms verweigert.</translation>
    </message>
    <message>
        <source>There is not enough memory for a picture of the screen.</source>
        <translation>Der Speicher reicht nicht für ein Bild des Bildschirms.</translation>
    </message>
    <message>
        <source>The Wayland session doesn&apos;t answer: it may have ended.</source>
        <translation>Die Wayland-Sitzung antwortet nicht: vielleicht ist sie beendet.</translation>
    </message>
    <message>
        <source>This desktop tells programs of no windows: capture a region instead.</source>
        <translation>Dieser Desktop nennt Programmen keine Fenster: bitte stattdessen einen Bereich aufnehmen.</translation>
    </message>
    <message>
        <source>This desktop lets no program turn the wheel.</source>
        <translation>Dieser Desktop lässt kein Programm am Rad drehen.</translation>
    </message>
    <message>
        <source>This desktop tells programs of no windows: regions and displays can be captured, and Lumenpost&apos;s own windows are in their pictures.</source>
        <translation>Dieser Desktop nennt Programmen keine Fenster: Bereiche und Bildschirme können aufgenommen werden, und Lumenposts eigene Fenster sind auf den Bildern.</translation>
    </message>
    <message>
        <source>This Wayland session shows Lumenpost nothing of its screen: log in to an X11 session instead.</source>
        <translation>Diese Wayland-Sitzung zeigt Lumenpost nichts von ihrem Bildschirm: bitte an einer X11-Sitzung anmelden.</translation>
    </message>
    <message>
        <source>A Wayland session doesn&apos;t tell programs what is clicked and typed in other ones.</source>
        <translation>Eine Wayland-Sitzung sagt Programmen nicht, was in anderen geklickt und getippt wird.</translation>
    </message>
    <message>
        <source>This desktop gives programs no shortcuts: in its settings, set a key for the command “lumenpost capture region”.</source>
        <translation>Dieser Desktop gibt Programmen keine Tastenkürzel: bitte in seinen Einstellungen eine Taste für den Befehl „lumenpost capture region“ festlegen.</translation>
    </message>
    <message>
        <source>Plasma gives pictures of the screen only to installed programs: install the package of Lumenpost, and start it from there.</source>
        <translation>Plasma gibt Bilder des Bildschirms nur an installierte Programme: bitte das Paket von Lumenpost installieren und es von dort starten.</translation>
    </message>
    <message>
        <source>The desktop gave a picture that is all black.</source>
        <translation>Der Desktop hat ein ganz schwarzes Bild geliefert.</translation>
    </message>
    <message>
        <source>The desktop&apos;s portal doesn&apos;t answer: it may not be installed, or have stopped.</source>
        <translation>Das Portal des Desktops antwortet nicht: vielleicht ist es nicht installiert oder beendet.</translation>
    </message>
    <message>
        <source>The desktop was not allowed to show Lumenpost the screen: allow it when it asks, or in its privacy settings.</source>
        <translation>Der Desktop durfte Lumenpost den Bildschirm nicht zeigen: bitte erlauben, wenn er fragt, oder in seinen Einstellungen zur Privatsphäre.</translation>
    </message>
    <message>
        <source>The desktop has stopped showing the screen.</source>
        <translation>Der Desktop zeigt den Bildschirm nicht mehr.</translation>
    </message>
    <message>
        <source>The screen can&apos;t be filmed: PipeWire isn&apos;t running.</source>
        <translation>Der Bildschirm kann nicht gefilmt werden: PipeWire läuft nicht.</translation>
    </message>
    <message>
        <source>The desktop refused to have the screen filmed.</source>
        <translation>Der Desktop hat es abgelehnt, den Bildschirm filmen zu lassen.</translation>
    </message>
    <message>
        <source>The desktop doesn&apos;t answer.</source>
        <translation>Der Desktop antwortet nicht.</translation>
    </message>
    <message>
        <source>This desktop doesn&apos;t let Lumenpost film its screen: its portal for screen casts isn&apos;t installed.</source>
        <translation>Dieser Desktop lässt Lumenpost den Bildschirm nicht filmen: Sein Portal dafür ist nicht installiert.</translation>
    </message>
    <message>
        <source>Another display was chosen: choose “%1”, which shall be filmed.</source>
        <translation>Es wurde ein anderer Bildschirm gewählt: Wählen Sie „%1“, der gefilmt werden soll.</translation>
    </message>
    <message>
        <source>No language data for “%1” is installed; there is: %2.</source>
        <translation>Für „%1“ sind keine Sprachdaten installiert; vorhanden sind: %2.</translation>
    </message>
    <message>
        <source>The desktop&apos;s settings can&apos;t be changed.</source>
        <translation>Die Einstellungen des Desktops lassen sich nicht ändern.</translation>
    </message>
    <message>
        <source>The desktop no longer lets Lumenpost film the screen.</source>
        <translation>Der Desktop lässt Lumenpost den Bildschirm nicht mehr filmen.</translation>
    </message>
    <message>
        <source>Nobody answered the desktop&apos;s question whether Lumenpost may see the screen: try again, and allow it.</source>
        <translation>Niemand hat die Frage des Desktops beantwortet, ob Lumenpost den Bildschirm sehen darf: bitte noch einmal versuchen und es erlauben.</translation>
    </message>
</context>
<context>
    <name>RecordingTexts</name>
    <message>
        <source>This recording has no audio. Turn on Microphone (for your voice) or System Audio in Video mode before recording.</source>
        <translation>Dieser Film hat keinen Ton. Vor dem Filmen Mikrofon (für die Stimme) oder Systemton im Filmmodus einschalten.</translation>
    </message>
    <message>
        <source>No speech was found. Captions come from spoken words — turn on Microphone in Video mode before recording to caption your narration.</source>
        <translation>Es wurde nichts Gesprochenes gefunden. Untertitel entstehen aus Gesprochenem — vor dem Filmen das Mikrofon im Filmmodus einschalten.</translation>
    </message>
    <message>
        <source>The sound couldn&apos;t be written: %1.</source>
        <translation>Der Ton konnte nicht geschrieben werden: %1.</translation>
    </message>
    <message>
        <source>The speech recogniser %1 failed.</source>
        <translation>Die Spracherkennung %1 ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>The speech recogniser %1 gave no words.</source>
        <translation>Die Spracherkennung %1 hat keine Wörter geliefert.</translation>
    </message>
    <message>
        <source>There is no speech recogniser %1.</source>
        <translation>Es gibt keine Spracherkennung %1.</translation>
    </message>
    <message>
        <source>The speech recogniser&apos;s model %1 is missing.</source>
        <translation>Das Modell %1 der Spracherkennung fehlt.</translation>
    </message>
    <message>
        <source>The screen gave no picture.</source>
        <translation>Der Bildschirm hat kein Bild geliefert.</translation>
    </message>
    <message>
        <source>GIF export failed</source>
        <translation>GIF-Export fehlgeschlagen</translation>
    </message>
    <message>
        <source>The film has nothing between these times: it is %1 seconds long.</source>
        <translation>Zwischen diesen Zeiten hat der Film nichts: Er ist %1 Sekunden lang.</translation>
    </message>
    <message>
        <source>There is no folder %1.</source>
        <translation>Es gibt keinen Ordner %1.</translation>
    </message>
    <message>
        <source>The recording couldn&apos;t be prepared: %1.</source>
        <translation>Der Film konnte nicht vorbereitet werden: %1.</translation>
    </message>
    <message>
        <source>The recording couldn&apos;t take its name: %1. It is in %2.</source>
        <translation>Der Film konnte seinen Namen nicht annehmen: %1. Er liegt in %2.</translation>
    </message>
    <message numerus="yes">
        <source>%n recording(s) that broke off are in your Library now</source>
        <translation>
            <numerusform>%n abgebrochener Film ist jetzt in der Bibliothek</numerusform>
            <numerusform>%n abgebrochene Filme sind jetzt in der Bibliothek</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 What was recorded until then is kept as “%2”.</source>
        <translation>%1 Was bis dahin aufgenommen wurde, ist als „%2“ aufbewahrt.</translation>
    </message>
    <message>
        <source>The film itself can&apos;t be the file that is written.</source>
        <translation>Der Film selbst kann nicht die Datei sein, die geschrieben wird.</translation>
    </message>
    <message>
        <source>Exported %1</source>
        <translation>%1 exportiert</translation>
    </message>
    <message>
        <source>GIF export failed: %1</source>
        <translation>GIF-Export fehlgeschlagen: %1</translation>
    </message>
</context>
<context>
    <name>RecordingUiTexts</name>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Stop Recording</source>
        <translation>Film beenden</translation>
    </message>
    <message>
        <source>Finish and open the recording.</source>
        <translation>Den Film beenden und öffnen.</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>Untertitel</translation>
    </message>
    <message>
        <source>Transcribed on this Mac. Review before publishing.</source>
        <translation>Auf diesem Computer erkannt. Vor dem Veröffentlichen durchsehen.</translation>
    </message>
    <message>
        <source>Copy Text</source>
        <translation>Text kopieren</translation>
    </message>
    <message>
        <source>Copy the whole transcript as plain text.</source>
        <translation>Alles Gesprochene als einfachen Text kopieren.</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Save SRT…</source>
        <translation>SRT sichern…</translation>
    </message>
    <message>
        <source>Save SRT</source>
        <translation>SRT sichern</translation>
    </message>
    <message>
        <source>Subtitle file that YouTube, Vimeo, Premiere and most players can load.</source>
        <translation>Untertiteldatei, die YouTube, Vimeo, Premiere und die meisten Abspielprogramme laden können.</translation>
    </message>
    <message>
        <source>Listening to the recording…</source>
        <translation>Die Aufnahme wird angehört …</translation>
    </message>
    <message>
        <source>Transcript copied</source>
        <translation>Text kopiert</translation>
    </message>
    <message>
        <source>Subtitles</source>
        <translation>Untertitel</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>%1 gesichert</translation>
    </message>
    <message>
        <source>Film</source>
        <translation>Film</translation>
    </message>
    <message>
        <source>Start of the trimmed part</source>
        <translation>Anfang des Ausschnitts</translation>
    </message>
    <message>
        <source>End of the trimmed part</source>
        <translation>Ende des Ausschnitts</translation>
    </message>
    <message>
        <source>Timeline</source>
        <translation>Zeitleiste</translation>
    </message>
    <message>
        <source>Trim Again</source>
        <translation>Neu kürzen</translation>
    </message>
    <message>
        <source>Drag the yellow handles to cut the start and end. Exports use the trimmed part.</source>
        <translation>Mit den gelben Griffen Anfang und Ende abschneiden. Exporte verwenden den gekürzten Teil.</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <translation>Im Ordner zeigen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy the video file to paste into Mail, Slack or Finder.</source>
        <translation>Die Filmdatei kopieren, um sie in E-Mail, Chat oder Dateiverwaltung einzufügen.</translation>
    </message>
    <message>
        <source>Captions…</source>
        <translation>Untertitel…</translation>
    </message>
    <message>
        <source>Turn the speech in this recording into subtitles (SRT), transcribed on your Mac.</source>
        <translation>Aus dem Gesprochenen dieser Aufnahme Untertitel (SRT) machen, auf diesem Computer erkannt.</translation>
    </message>
    <message>
        <source>Exports use the trimmed range</source>
        <translation>Exporte verwenden den Ausschnitt</translation>
    </message>
    <message>
        <source>Export GIF…</source>
        <translation>GIF exportieren…</translation>
    </message>
    <message>
        <source>Make an animated GIF (up to 60 seconds, 12 fps) — great for chat and docs.</source>
        <translation>Ein animiertes GIF machen (bis zu 60 Sekunden, 12 Bilder je Sekunde) – gut für Chat und Anleitungen.</translation>
    </message>
    <message>
        <source>Export MP4…</source>
        <translation>MP4 exportieren…</translation>
    </message>
    <message>
        <source>Save a high-quality video file. Uses the trimmed range if you trimmed.</source>
        <translation>Eine Filmdatei in hoher Qualität sichern. Verwendet den Ausschnitt, wenn gekürzt wurde.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Trim</source>
        <translation>Kürzen</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Von</translation>
    </message>
    <message>
        <source>To</source>
        <translation>Bis</translation>
    </message>
    <message>
        <source>%1 / %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leertaste</translation>
    </message>
    <message>
        <source>Nothing to play</source>
        <translation>Nichts abzuspielen</translation>
    </message>
    <message>
        <source>%1 %2 %</source>
        <translation>%1 %2 %</translation>
    </message>
    <message>
        <source>%1, %2 left</source>
        <translation>%1, noch %2</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Export GIF</source>
        <translation>GIF exportieren</translation>
    </message>
    <message>
        <source>Export MP4</source>
        <translation>MP4 exportieren</translation>
    </message>
    <message>
        <source>Animated GIFs</source>
        <translation>Animierte GIFs</translation>
    </message>
    <message>
        <source>MPEG-4 films</source>
        <translation>MPEG-4-Filme</translation>
    </message>
    <message>
        <source>Making GIF…</source>
        <translation>GIF wird gemacht …</translation>
    </message>
    <message>
        <source>Exporting MP4…</source>
        <translation>MP4 wird exportiert …</translation>
    </message>
    <message>
        <source>The film is no longer there</source>
        <translation>Der Film ist nicht mehr da</translation>
    </message>
    <message>
        <source>Copied the film</source>
        <translation>Film kopiert</translation>
    </message>
    <message>
        <source>Showing keystrokes needs Accessibility permission (Settings › Permissions &amp; Help)</source>
        <translation>Zum Zeigen der Tasten fehlt der Zugriff auf Eingaben (Einstellungen › Zugriff &amp; Hilfe)</translation>
    </message>
    <message>
        <source>Drawing</source>
        <translation>Zeichnet</translation>
    </message>
    <message>
        <source>Draw on Screen</source>
        <translation>Auf dem Bildschirm zeichnen</translation>
    </message>
    <message>
        <source>Sketch on the screen while recording — it&apos;s part of the video. Esc or click again to stop drawing.</source>
        <translation>Während der Aufnahme auf den Bildschirm zeichnen – es ist Teil des Films. Esc oder ein weiterer Klick beendet das Zeichnen.</translation>
    </message>
    <message>
        <source>Clear Drawing</source>
        <translation>Zeichnung löschen</translation>
    </message>
    <message>
        <source>Erase everything you&apos;ve drawn.</source>
        <translation>Alles Gezeichnete entfernen.</translation>
    </message>
    <message>
        <source>Draw</source>
        <translation>Zeichnen</translation>
    </message>
    <message>
        <source>Webcam unavailable — check Camera permission in Settings</source>
        <translation>Kamera nicht verfügbar – Kamerazugriff in den Einstellungen prüfen</translation>
    </message>
    <message>
        <source>What you save holds the trimmed part, with times from its start.</source>
        <translation>Gesichert wird der gekürzte Teil, mit Zeiten ab seinem Anfang.</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufnahme</translation>
    </message>
</context>
<context>
    <name>ServicesTexts</name>
    <message>
        <source>Describe</source>
        <translation>Beschreiben</translation>
    </message>
    <message>
        <source>Step-by-Step Instructions</source>
        <translation>Schritt-für-Schritt-Anleitung</translation>
    </message>
    <message>
        <source>Alt Text</source>
        <translation>Alternativtext</translation>
    </message>
    <message>
        <source>Suggested Name</source>
        <translation>Vorgeschlagener Name</translation>
    </message>
    <message>
        <source>Caption</source>
        <translation>Bildunterschrift</translation>
    </message>
    <message>
        <source>Couldn&apos;t encode the image.</source>
        <translation>Das Bild konnte nicht kodiert werden.</translation>
    </message>
    <message>
        <source>Claude API error (HTTP %1).</source>
        <translation>Claude-API-Fehler (HTTP %1).</translation>
    </message>
    <message>
        <source>Claude declined this request: %1</source>
        <translation>Claude hat diese Anfrage abgelehnt: %1</translation>
    </message>
    <message>
        <source>Claude declined this request.</source>
        <translation>Claude hat diese Anfrage abgelehnt.</translation>
    </message>
    <message>
        <source>Add your Anthropic API key in Settings › AI &amp; Sharing.</source>
        <translation>Bitte den Anthropic-API-Schlüssel unter Einstellungen › KI &amp; Teilen eintragen.</translation>
    </message>
    <message>
        <source>Add an Imgur Client ID in Settings › AI &amp; Sharing.</source>
        <translation>Bitte eine Imgur-Client-ID unter Einstellungen › KI &amp; Teilen eintragen.</translation>
    </message>
    <message>
        <source>No text found</source>
        <translation>Kein Text gefunden</translation>
    </message>
    <message numerus="yes">
        <source>Copied %n lines of text</source>
        <translation>
            <numerusform>%n Zeilen Text kopiert</numerusform>
            <numerusform>%n Zeilen Text kopiert</numerusform>
        </translation>
    </message>
    <message>
        <source>Imgur upload failed.</source>
        <translation>Hochladen zu Imgur fehlgeschlagen.</translation>
    </message>
</context>
<context>
    <name>SettingsTexts</name>
    <message>
        <source>Couldn&apos;t change login item: </source>
        <translation>Autostart konnte nicht geändert werden: </translation>
    </message>
    <message>
        <source>Window to Clipboard</source>
        <translation>Fenster in die Zwischenablage</translation>
    </message>
    <message>
        <source>Delayed Region</source>
        <translation>Bereich mit Verzögerung</translation>
    </message>
    <message>
        <source>Recording with Clicks</source>
        <translation>Film mit Klicks</translation>
    </message>
    <message>
        <source>%1s delay</source>
        <translation>%1 s Verzögerung</translation>
    </message>
    <message>
        <source>backdrop</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>clipboard</source>
        <translation>Zwischenablage</translation>
    </message>
    <message>
        <source>editor</source>
        <translation>Editor</translation>
    </message>
    <message>
        <source>Region</source>
        <translation>Bereich</translation>
    </message>
    <message>
        <source>Screen</source>
        <translation>Bildschirm</translation>
    </message>
    <message>
        <source>Scroll</source>
        <translation>Scrollen</translation>
    </message>
    <message>
        <source>Video</source>
        <translation>Film</translation>
    </message>
    <message>
        <source>Steps</source>
        <translation>Schritte</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>My %1 Preset</source>
        <translation>Meine Vorlage: %1</translation>
    </message>
    <message>
        <source>Capture (panel mode)</source>
        <translation>Aufnehmen (Modus des Felds)</translation>
    </message>
    <message>
        <source>Capture full screen</source>
        <translation>Ganzen Bildschirm aufnehmen</translation>
    </message>
    <message>
        <source>Capture in 3 seconds</source>
        <translation>In 3 Sekunden aufnehmen</translation>
    </message>
    <message>
        <source>Grab text</source>
        <translation>Text holen</translation>
    </message>
    <message>
        <source>Scrolling capture</source>
        <translation>Scrollende Aufnahme</translation>
    </message>
    <message>
        <source>Start / stop recording</source>
        <translation>Film beginnen / beenden</translation>
    </message>
    <message>
        <source>Record steps (how-to guide)</source>
        <translation>Schritte aufzeichnen (Anleitung)</translation>
    </message>
    <message>
        <source>Open Library</source>
        <translation>Bibliothek öffnen</translation>
    </message>
    <message>
        <source>Pin last capture</source>
        <translation>Letzte Aufnahme anheften</translation>
    </message>
</context>
<context>
    <name>ShellTexts</name>
    <message>
        <source>Capture mode</source>
        <translation>Aufnahmemodus</translation>
    </message>
    <message>
        <source>Presets</source>
        <translation>Vorlagen</translation>
    </message>
    <message>
        <source>Save Current…</source>
        <translation>Aktuelles sichern …</translation>
    </message>
    <message>
        <source>Save the mode and options above as a one-click preset. Give it a shortcut in Settings.</source>
        <translation>Modus und Optionen oben als Vorlage sichern. Ein Tastenkürzel dafür gibt es in den Einstellungen.</translation>
    </message>
    <message>
        <source>Recent</source>
        <translation>Zuletzt</translation>
    </message>
    <message>
        <source>See All</source>
        <translation>Alle zeigen</translation>
    </message>
    <message>
        <source>Click to open · drag out · right-click to pin or copy.</source>
        <translation>Klick öffnet · herausziehen · Rechtsklick heftet an oder kopiert.</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Put every option back to its default.</source>
        <translation>Alle Optionen auf ihren Ausgangswert setzen.</translation>
    </message>
    <message>
        <source>Open Image</source>
        <translation>Bild öffnen</translation>
    </message>
    <message>
        <source>Open any image file in the editor.</source>
        <translation>Eine beliebige Bilddatei im Editor öffnen.</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>Browse, search and organize all your captures.</source>
        <translation>Alle Aufnahmen durchsehen, durchsuchen und ordnen.</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Shortcuts, save folder, recording, AI and more.</source>
        <translation>Tastenkürzel, Ablage, Filme, KI und mehr.</translation>
    </message>
    <message>
        <source>Screen Recording Permission…</source>
        <translation>Berechtigung für Bildschirmaufnahmen …</translation>
    </message>
    <message>
        <source>Quit Lumenpost</source>
        <translation>Lumenpost beenden</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
    <message>
        <source>Screen Recording permission and Quit.</source>
        <translation>Berechtigung für Bildschirmaufnahmen und Beenden.</translation>
    </message>
    <message>
        <source>Capture</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Stop Recording</source>
        <translation>Film beenden</translation>
    </message>
    <message>
        <source>Stop and open the recording.</source>
        <translation>Den Film beenden und öffnen.</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Filmen</translation>
    </message>
    <message>
        <source>Start Steps</source>
        <translation>Schritte beginnen</translation>
    </message>
    <message>
        <source> Return also starts it.</source>
        <translation> Auch die Eingabetaste startet.</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Pin to Screen</source>
        <translation>An den Bildschirm heften</translation>
    </message>
    <message>
        <source>Copy Image</source>
        <translation>Bild kopieren</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <translation>In der Dateiverwaltung zeigen</translation>
    </message>
    <message>
        <source>Image copied to clipboard</source>
        <translation>Bild in die Zwischenablage kopiert</translation>
    </message>
    <message>
        <source>Type shortcut…</source>
        <translation>Tastenkürzel drücken …</translation>
    </message>
    <message>
        <source>This key can&apos;t be part of a shortcut.</source>
        <translation>Diese Taste kann nicht Teil eines Tastenkürzels sein.</translation>
    </message>
    <message>
        <source>A shortcut needs a modifier key as well.</source>
        <translation>Ein Tastenkürzel braucht auch eine Umschalttaste wie Strg oder Super.</translation>
    </message>
    <message>
        <source>Region</source>
        <translation>Bereich</translation>
    </message>
    <message>
        <source>Drag a region or click a window to capture it.</source>
        <translation>Einen Bereich aufziehen oder ein Fenster anklicken, um es aufzunehmen.</translation>
    </message>
    <message>
        <source>Screen</source>
        <translation>Bildschirm</translation>
    </message>
    <message>
        <source>Capture the whole screen under the cursor.</source>
        <translation>Den ganzen Bildschirm unter dem Mauszeiger aufnehmen.</translation>
    </message>
    <message>
        <source>Scroll</source>
        <translation>Scrollen</translation>
    </message>
    <message>
        <source>Select a scrollable area; Lumenpost scrolls and stitches it into one tall image.</source>
        <translation>Einen scrollbaren Bereich wählen; Lumenpost scrollt und setzt ein hohes Bild zusammen.</translation>
    </message>
    <message>
        <source>Video</source>
        <translation>Film</translation>
    </message>
    <message>
        <source>Record a region, window or the full screen.</source>
        <translation>Einen Bereich, ein Fenster oder den ganzen Bildschirm filmen.</translation>
    </message>
    <message>
        <source>Steps</source>
        <translation>Schritte</translation>
    </message>
    <message>
        <source>Click through a task and Lumenpost turns each click into a numbered step-by-step guide.</source>
        <translation>Eine Aufgabe durchklicken; Lumenpost macht aus jedem Klick einen nummerierten Schritt.</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Select an area and copy its text to the clipboard.</source>
        <translation>Einen Bereich wählen und seinen Text in die Zwischenablage kopieren.</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>Editor</translation>
    </message>
    <message>
        <source>Open each capture in the editor so you can mark it up.</source>
        <translation>Jede Aufnahme im Editor öffnen, um sie auszuzeichnen.</translation>
    </message>
    <message>
        <source>Clipboard</source>
        <translation>Zwischenablage</translation>
    </message>
    <message>
        <source>Copy each capture to the clipboard automatically.</source>
        <translation>Jede Aufnahme selbsttätig in die Zwischenablage kopieren.</translation>
    </message>
    <message>
        <source>Cursor</source>
        <translation>Mauszeiger</translation>
    </message>
    <message>
        <source>Include the mouse pointer in the capture.</source>
        <translation>Den Mauszeiger mit aufnehmen.</translation>
    </message>
    <message>
        <source>%1s Delay</source>
        <translation>%1 s Verzögerung</translation>
    </message>
    <message>
        <source>Wait %1 seconds first — time to open a menu or hover something.</source>
        <translation>Zuerst %1 Sekunden warten — Zeit, ein Menü zu öffnen.</translation>
    </message>
    <message>
        <source>System Audio</source>
        <translation>Systemton</translation>
    </message>
    <message>
        <source>Record sound playing on your Mac.</source>
        <translation>Den Ton dieses Rechners aufnehmen.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Mikrofon</translation>
    </message>
    <message>
        <source>Record your voice through the microphone. Needed for captions of your narration.</source>
        <translation>Die Stimme über das Mikrofon aufnehmen. Nötig für Untertitel.</translation>
    </message>
    <message>
        <source>Show Clicks</source>
        <translation>Klicks zeigen</translation>
    </message>
    <message>
        <source>Draw a ripple wherever you click, so viewers can follow along.</source>
        <translation>Bei jedem Klick eine Welle zeichnen, damit man folgen kann.</translation>
    </message>
    <message>
        <source>Show Keys</source>
        <translation>Tasten zeigen</translation>
    </message>
    <message>
        <source>Show keyboard shortcuts you press (like ⌘C) on screen. Plain typing is never shown.</source>
        <translation>Gedrückte Tastenkürzel (wie Strg+C) zeigen. Getippter Text wird nie gezeigt.</translation>
    </message>
    <message>
        <source>Webcam</source>
        <translation>Webcam</translation>
    </message>
    <message>
        <source>Add a round webcam bubble you can drag anywhere.</source>
        <translation>Eine runde, verschiebbare Webcam-Blase hinzufügen.</translation>
    </message>
    <message>
        <source>Mark Clicks</source>
        <translation>Klicks markieren</translation>
    </message>
    <message>
        <source>Circle each click and number the steps.</source>
        <translation>Jeden Klick umkreisen und die Schritte nummerieren.</translation>
    </message>
    <message>
        <source>Auto-Redact</source>
        <translation>Selbst schwärzen</translation>
    </message>
    <message>
        <source>Hide emails, numbers and API keys in every step (done on your Mac).</source>
        <translation>E-Mails, Nummern und API-Schlüssel in jedem Schritt verbergen (auf diesem Rechner).</translation>
    </message>
    <message>
        <source>This desktop</source>
        <translation>Dieser Desktop</translation>
    </message>
    <message>
        <source>Tray</source>
        <translation>Symbolleiste</translation>
    </message>
    <message>
        <source>Library data</source>
        <translation>Bibliotheksdaten</translation>
    </message>
    <message>
        <source>Library data (*.json)</source>
        <translation>Bibliotheksdaten (*.json)</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Collections, favorites, source apps, AI descriptions and the text index. Backed up automatically each day.</source>
        <translation>Sammlungen, Favoriten, Quellprogramme, KI-Beschreibungen und das Textverzeichnis. Wird täglich selbst gesichert.</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>Exportieren …</translation>
    </message>
    <message>
        <source>Exported library data</source>
        <translation>Bibliotheksdaten exportiert</translation>
    </message>
    <message>
        <source>Library data export failed</source>
        <translation>Export der Bibliotheksdaten fehlgeschlagen</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <source>Merges a backup into this library. Nothing existing is removed.</source>
        <translation>Übernimmt eine Sicherung in diese Bibliothek. Vorhandenes bleibt.</translation>
    </message>
    <message>
        <source>Import…</source>
        <translation>Importieren …</translation>
    </message>
    <message>
        <source>Imported library data</source>
        <translation>Bibliotheksdaten importiert</translation>
    </message>
    <message>
        <source>Library data import failed</source>
        <translation>Import der Bibliotheksdaten fehlgeschlagen</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Welcome guide</source>
        <translation>Einführung</translation>
    </message>
    <message>
        <source>Show Welcome Guide</source>
        <translation>Einführung zeigen</translation>
    </message>
    <message>
        <source>Create Diagnostics File</source>
        <translation>Diagnosedatei erstellen</translation>
    </message>
    <message>
        <source>Diagnostics</source>
        <translation>Diagnose</translation>
    </message>
    <message>
        <source>Saves logs, crash reports and system info (no images, no API keys) as a zip on your Desktop. Nothing is sent.</source>
        <translation>Sichert Protokolle, Absturzberichte und Systemangaben (keine Bilder, keine API-Schlüssel) als Zip auf dem Schreibtisch. Nichts wird gesendet.</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>%1 gesichert</translation>
    </message>
    <message>
        <source>Couldn&apos;t create the diagnostics file</source>
        <translation>Die Diagnosedatei konnte nicht erstellt werden</translation>
    </message>
    <message>
        <source>Permissions &amp; Help</source>
        <translation>Rechte &amp; Hilfe</translation>
    </message>
    <message>
        <source>Permissions</source>
        <translation>Berechtigungen</translation>
    </message>
    <message>
        <source>Delay</source>
        <translation>Verzögerung</translation>
    </message>
    <message>
        <source>Backdrop</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Mic</source>
        <translation>Mikro</translation>
    </message>
    <message>
        <source>Clicks</source>
        <translation>Klicks</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>Modus</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Remove Shortcut</source>
        <translation>Tastenkürzel entfernen</translation>
    </message>
    <message>
        <source>Add Shortcut</source>
        <translation>Tastenkürzel hinzufügen</translation>
    </message>
    <message>
        <source>Gives this preset a global shortcut. Click the shortcut afterwards to change it.</source>
        <translation>Gibt dieser Vorlage ein globales Tastenkürzel. Danach anklicken, um es zu ändern.</translation>
    </message>
    <message>
        <source>Delete Preset</source>
        <translation>Vorlage löschen</translation>
    </message>
    <message>
        <source>Presets appear in the capture panel. Give one a shortcut to run it from anywhere.</source>
        <translation>Vorlagen stehen im Aufnahmefeld. Mit Tastenkürzel starten sie von überall.</translation>
    </message>
    <message>
        <source>Save captures to</source>
        <translation>Aufnahmen sichern in</translation>
    </message>
    <message>
        <source>This folder can&apos;t be used</source>
        <translation>Dieser Ordner kann nicht benutzt werden</translation>
    </message>
    <message>
        <source>Lumenpost may not write to “%1”.</source>
        <translation>Lumenpost darf nicht in „%1“ schreiben.</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message>
        <source>After 30 days</source>
        <translation>Nach 30 Tagen</translation>
    </message>
    <message>
        <source>After 90 days</source>
        <translation>Nach 90 Tagen</translation>
    </message>
    <message>
        <source>After 1 year</source>
        <translation>Nach 1 Jahr</translation>
    </message>
    <message numerus="yes">
        <source>After %n day(s)</source>
        <translation>
            <numerusform>Nach %n Tag</numerusform>
            <numerusform>Nach %n Tagen</numerusform>
        </translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Wählen …</translation>
    </message>
    <message>
        <source>Image format</source>
        <translation>Bildformat</translation>
    </message>
    <message>
        <source>Delete old captures</source>
        <translation>Alte Aufnahmen löschen</translation>
    </message>
    <message>
        <source>Favorites and anything in a collection are always kept. Deleted items go to the Trash.</source>
        <translation>Favoriten und alles in Sammlungen bleiben. Gelöschtes kommt in den Papierkorb.</translation>
    </message>
    <message>
        <source>Play shutter sound</source>
        <translation>Auslösegeräusch</translation>
    </message>
    <message>
        <source>Add gradient backdrop to window captures</source>
        <translation>Fensteraufnahmen mit Verlaufshintergrund</translation>
    </message>
    <message>
        <source>Launch Lumenpost at login</source>
        <translation>Lumenpost beim Anmelden starten</translation>
    </message>
    <message>
        <source>Show quick tips when hovering over buttons</source>
        <translation>Kurze Tipps über Knöpfen zeigen</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Filmen</translation>
    </message>
    <message>
        <source>Record system audio</source>
        <translation>Systemton aufnehmen</translation>
    </message>
    <message>
        <source>Record microphone</source>
        <translation>Mikrofon aufnehmen</translation>
    </message>
    <message>
        <source>Show cursor in recordings</source>
        <translation>Mauszeiger in Filmen zeigen</translation>
    </message>
    <message>
        <source>Highlight clicks</source>
        <translation>Klicks hervorheben</translation>
    </message>
    <message>
        <source>Show keyboard shortcuts (needs Accessibility)</source>
        <translation>Tastenkürzel zeigen (braucht Barrierefreiheit)</translation>
    </message>
    <message>
        <source>Webcam bubble</source>
        <translation>Webcam-Blase</translation>
    </message>
    <message>
        <source>Recordings are saved as .mov files in your capture folder. Trim them and export MP4 or GIF from the video editor.</source>
        <translation>Filme werden als .mov in der Ablage gesichert. Im Filmeditor schneiden und als MP4 oder GIF exportieren.</translation>
    </message>
    <message>
        <source>AI &amp; Sharing</source>
        <translation>KI &amp; Teilen</translation>
    </message>
    <message>
        <source>Claude</source>
        <translation>Claude</translation>
    </message>
    <message>
        <source>Anthropic API key</source>
        <translation>Anthropic-API-Schlüssel</translation>
    </message>
    <message>
        <source>Auto-name captures with AI</source>
        <translation>Aufnahmen mit KI benennen</translation>
    </message>
    <message>
        <source>Used only for AI actions you trigger and for auto-naming. Images are sent to Anthropic&apos;s API. The key is stored in your Keychain.</source>
        <translation>Nur für KI-Aktionen, die Sie auslösen, und zum Benennen. Bilder gehen an Anthropics API. Der Schlüssel liegt im Passwortspeicher.</translation>
    </message>
    <message>
        <source>Upload</source>
        <translation>Hochladen</translation>
    </message>
    <message>
        <source>Imgur Client ID</source>
        <translation>Imgur-Client-ID</translation>
    </message>
    <message>
        <source>Register…</source>
        <translation>Registrieren …</translation>
    </message>
    <message>
        <source>The page couldn&apos;t be opened</source>
        <translation>Die Seite konnte nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Get a Client ID</source>
        <translation>Client-ID holen</translation>
    </message>
    <message>
        <source>Register a free application with Imgur, choosing anonymous usage without a callback, and paste its Client ID above. That enables “Upload &amp; Copy Link”.</source>
        <translation>Bei Imgur kostenlos eine Anwendung registrieren (anonyme Nutzung ohne Callback) und ihre Client-ID oben einfügen. Das schaltet „Hochladen &amp; Link kopieren“ frei.</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Nichts gefunden</translation>
    </message>
    <message>
        <source>No setting has these words.</source>
        <translation>Keine Einstellung enthält diese Wörter.</translation>
    </message>
    <message>
        <source>Lumenpost Settings</source>
        <translation>Lumenpost – Einstellungen</translation>
    </message>
    <message>
        <source>Search settings</source>
        <translation>Einstellungen durchsuchen</translation>
    </message>
    <message>
        <source>“%1” uses %2 already.</source>
        <translation>„%1“ benutzt %2 schon.</translation>
    </message>
    <message>
        <source>Another program has taken %1.</source>
        <translation>Ein anderes Programm hat %1 belegt.</translation>
    </message>
    <message>
        <source>%1 is used by “%2”.</source>
        <translation>%1 wird von „%2“ benutzt.</translation>
    </message>
    <message>
        <source>Open the capture panel</source>
        <translation>Aufnahmefeld öffnen</translation>
    </message>
    <message>
        <source>Use the Print key as well</source>
        <translation>Auch die Druck-Taste benutzen</translation>
    </message>
    <message>
        <source>Print takes a region, Shift+Print the screen, Alt+Print the window in front, Ctrl+Print a region after 3 seconds.</source>
        <translation>Druck nimmt einen Bereich, Umschalt+Druck den Bildschirm, Alt+Druck das vordere Fenster, Strg+Druck einen Bereich nach 3 Sekunden.</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>Ausgangswerte</translation>
    </message>
    <message>
        <source>All shortcuts as they were at first</source>
        <translation>Alle Tastenkürzel wie am Anfang</translation>
    </message>
    <message>
        <source>Print key</source>
        <translation>Druck-Taste</translation>
    </message>
    <message>
        <source>Screen Recording</source>
        <translation>Bildschirmaufnahme</translation>
    </message>
    <message>
        <source>Required — lets Lumenpost see your screen to capture it.</source>
        <translation>Nötig — damit Lumenpost den Bildschirm sehen und aufnehmen kann.</translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>Barrierefreiheit</translation>
    </message>
    <message>
        <source>Optional — auto-scrolling capture and showing keystrokes in recordings.</source>
        <translation>Freiwillig — selbst scrollende Aufnahmen und Tasten in Filmen.</translation>
    </message>
    <message>
        <source>Optional — record your voice in screen recordings.</source>
        <translation>Freiwillig — die eigene Stimme in Filmen.</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Optional — webcam bubble in recordings.</source>
        <translation>Freiwillig — Webcam-Blase in Filmen.</translation>
    </message>
    <message>
        <source>Speech Recognition</source>
        <translation>Spracherkennung</translation>
    </message>
    <message>
        <source>Optional — automatic captions for recordings.</source>
        <translation>Freiwillig — selbsttätige Untertitel für Filme.</translation>
    </message>
    <message>
        <source>Accessibility bus</source>
        <translation>Barrierefreiheits-Bus</translation>
    </message>
    <message>
        <source>Guides name the buttons and fields that you click.</source>
        <translation>Anleitungen nennen die Knöpfe und Felder, die Sie anklicken.</translation>
    </message>
    <message>
        <source>Guides can&apos;t name what you click.</source>
        <translation>Anleitungen können nicht nennen, was Sie anklicken.</translation>
    </message>
    <message>
        <source>Sound server</source>
        <translation>Tonserver</translation>
    </message>
    <message>
        <source>Recordings can have the computer&apos;s sound and your voice.</source>
        <translation>Filme können den Ton des Rechners und Ihre Stimme haben.</translation>
    </message>
    <message>
        <source>Recordings have no sound.</source>
        <translation>Filme haben keinen Ton.</translation>
    </message>
    <message>
        <source>Recordings can show you in a bubble.</source>
        <translation>Filme können Sie in einer Blase zeigen.</translation>
    </message>
    <message>
        <source>No camera is connected: recordings have no webcam bubble.</source>
        <translation>Keine Kamera angeschlossen: Filme haben keine Webcam-Blase.</translation>
    </message>
    <message>
        <source>Text recognition</source>
        <translation>Texterkennung</translation>
    </message>
    <message>
        <source>Text in captures is found, copied and redacted.</source>
        <translation>Text in Aufnahmen wird gefunden, kopiert und geschwärzt.</translation>
    </message>
    <message>
        <source>There is no language data: text in captures isn&apos;t recognized.</source>
        <translation>Es gibt keine Sprachdaten: Text in Aufnahmen wird nicht erkannt.</translation>
    </message>
    <message>
        <source>Speech model</source>
        <translation>Sprachmodell</translation>
    </message>
    <message>
        <source>Captions are made from what is said in recordings.</source>
        <translation>Untertitel entstehen aus dem, was in Filmen gesagt wird.</translation>
    </message>
    <message>
        <source>Captions can&apos;t be made from speech.</source>
        <translation>Aus Gesprochenem können keine Untertitel entstehen.</translation>
    </message>
    <message>
        <source>Desktop portals</source>
        <translation>Desktop-Portale</translation>
    </message>
    <message>
        <source>Lumenpost follows the desktop&apos;s light or dark look.</source>
        <translation>Lumenpost folgt dem hellen oder dunklen Aussehen des Desktops.</translation>
    </message>
    <message>
        <source>The desktop&apos;s light or dark look isn&apos;t followed.</source>
        <translation>Dem hellen oder dunklen Aussehen des Desktops wird nicht gefolgt.</translation>
    </message>
    <message>
        <source>Keyring</source>
        <translation>Passwortspeicher</translation>
    </message>
    <message>
        <source>Your API key is kept with the desktop&apos;s passwords.</source>
        <translation>Ihr API-Schlüssel liegt bei den Passwörtern des Desktops.</translation>
    </message>
    <message>
        <source>Your API key is kept in a file that only you can read.</source>
        <translation>Ihr API-Schlüssel liegt in einer Datei, die nur Sie lesen können.</translation>
    </message>
    <message>
        <source>Required</source>
        <translation>Nötig</translation>
    </message>
    <message>
        <source>Granted</source>
        <translation>Erlaubt</translation>
    </message>
    <message>
        <source>Allow…</source>
        <translation>Erlauben …</translation>
    </message>
    <message>
        <source>Shows the macOS permission prompt.</source>
        <translation>Zeigt die Frage nach der Berechtigung.</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Einstellungen öffnen</translation>
    </message>
    <message>
        <source>Opens System Settings › Privacy &amp; Security. Turn Lumenpost on, then come back.</source>
        <translation>Öffnet die Einstellungen des Desktops. Lumenpost erlauben, dann zurückkommen.</translation>
    </message>
    <message>
        <source>Languages: %1.</source>
        <translation>Sprachen: %1.</translation>
    </message>
    <message>
        <source>The package “%1” brings it.</source>
        <translation>Das Paket „%1“ enthält es.</translation>
    </message>
    <message>
        <source>It is there, but not for you: join the group “video” and log in again.</source>
        <translation>Sie ist da, aber nicht für Sie: der Gruppe „video“ beitreten und neu anmelden.</translation>
    </message>
    <message>
        <source>Works</source>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>Barred</source>
        <translation>Gesperrt</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Fehlt</translation>
    </message>
    <message>
        <source>The Lumenpost icon opens the capture panel and the menu.</source>
        <translation>Das Lumenpost-Symbol öffnet Aufnahmefeld und Menü.</translation>
    </message>
    <message>
        <source>This desktop shows no tray. Start Lumenpost again, or use the panel&apos;s shortcut, to open the capture panel.</source>
        <translation>Dieser Desktop zeigt keine Symbolleiste. Lumenpost noch einmal starten oder das Tastenkürzel benutzen, um das Aufnahmefeld zu öffnen.</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Welcome to Lumenpost</source>
        <translation>Willkommen bei Lumenpost</translation>
    </message>
    <message>
        <source>Capture, mark up and share anything on your screen.</source>
        <translation>Alles auf dem Bildschirm aufnehmen, auszeichnen und teilen.</translation>
    </message>
    <message>
        <source>Capture a region, window, full screen or a long scrolling page</source>
        <translation>Bereich, Fenster, ganzen Bildschirm oder eine lange Seite aufnehmen</translation>
    </message>
    <message>
        <source>Record your screen with audio, webcam and click highlights</source>
        <translation>Den Bildschirm filmen, mit Ton, Webcam und Klicks</translation>
    </message>
    <message>
        <source>Annotate with arrows, callouts, steps, blur and more</source>
        <translation>Mit Pfeilen, Sprechblasen, Schritten, Verpixelung und mehr auszeichnen</translation>
    </message>
    <message>
        <source>Find everything later in your searchable Library</source>
        <translation>Alles später in der Bibliothek wiederfinden</translation>
    </message>
    <message>
        <source>macOS asks before any app can see your screen. Only Screen Recording is required; the rest turn on extra features and can be granted later in Settings.</source>
        <translation>Nur die Bildschirmaufnahme ist nötig; das Übrige schaltet Weiteres frei und kann später in den Einstellungen erlaubt werden.</translation>
    </message>
    <message>
        <source>After granting Screen Recording for the first time, macOS may ask you to quit and reopen Lumenpost.</source>
        <translation>Nach der ersten Erlaubnis muss Lumenpost vielleicht neu gestartet werden.</translation>
    </message>
    <message>
        <source>Press the shortcut anywhere, or click the Lumenpost icon in the menu bar.</source>
        <translation>Das Tastenkürzel irgendwo drücken oder auf das Lumenpost-Symbol klicken.</translation>
    </message>
    <message>
        <source>Drag to select · click a window · Return for full screen · Esc to cancel</source>
        <translation>Ziehen wählt aus · Klick nimmt ein Fenster · Eingabe für den ganzen Bildschirm · Esc bricht ab</translation>
    </message>
    <message>
        <source>Capture Now</source>
        <translation>Jetzt aufnehmen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Capture panel</source>
        <translation>Aufnahmefenster</translation>
    </message>
    <message>
        <source>IPv6 addresses</source>
        <translation>IPv6-Adressen</translation>
    </message>
    <message>
        <source>Addresses of network devices</source>
        <translation>Adressen von Netzwerkgeräten</translation>
    </message>
    <message>
        <source>Bank accounts (IBAN)</source>
        <translation>Bankkonten (IBAN)</translation>
    </message>
    <message>
        <source>What stands after “password”, “token” and the like</source>
        <translation>Was hinter „Passwort“, „Token“ und Ähnlichem steht</translation>
    </message>
    <message>
        <source>Long keys with + and /</source>
        <translation>Lange Schlüssel mit + und /</translation>
    </message>
    <message>
        <source>Automatic redaction also hides</source>
        <translation>Automatisch verdeckt werden auch</translation>
    </message>
    <message>
        <source>E-mail addresses, telephone and other long numbers, and the keys of well-known services are hidden in any case.</source>
        <translation>E-Mail-Adressen, Telefon- und andere lange Nummern sowie die Schlüssel bekannter Dienste werden in jedem Fall verdeckt.</translation>
    </message>
    <message>
        <source>Set in the Desktop</source>
        <translation>Im Desktop festlegen</translation>
    </message>
    <message>
        <source>Copy These Lines</source>
        <translation>Diese Zeilen kopieren</translation>
    </message>
    <message>
        <source>Copy These Commands</source>
        <translation>Diese Befehle kopieren</translation>
    </message>
    <message>
        <source>This desktop gives programs no shortcuts</source>
        <translation>Dieser Desktop gibt Programmen keine Tastenkürzel</translation>
    </message>
    <message>
        <source>Its own keys can run Lumenpost&apos;s commands instead: the keys below are put among its custom shortcuts.</source>
        <translation>Seine eigenen Tasten können stattdessen Befehle von Lumenpost ausführen: Die Tasten unten kommen zu seinen benutzerdefinierten Tastenkürzeln.</translation>
    </message>
    <message>
        <source>Its own keys can run Lumenpost&apos;s commands instead: put these lines into its configuration, and have it read that again.</source>
        <translation>Seine eigenen Tasten können stattdessen Befehle von Lumenpost ausführen: Diese Zeilen gehören in seine Konfiguration, die er danach neu einlesen muss.</translation>
    </message>
    <message>
        <source>Its own keys can run Lumenpost&apos;s commands instead: set them in its keyboard settings.</source>
        <translation>Seine eigenen Tasten können stattdessen Befehle von Lumenpost ausführen: Sie werden in seinen Tastatureinstellungen festgelegt.</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Kopiert</translation>
    </message>
    <message>
        <source>The desktop&apos;s keys are set</source>
        <translation>Die Tasten des Desktops sind festgelegt</translation>
    </message>
    <message>
        <source>Commands for the desktop&apos;s keys</source>
        <translation>Befehle für die Tasten des Desktops</translation>
    </message>
</context>
<context>
    <name>StepsTexts</name>
    <message>
        <source>The folder %1 can&apos;t be made.</source>
        <translation>Der Ordner %1 kann nicht angelegt werden.</translation>
    </message>
    <message>
        <source>Nothing can be written into %1.</source>
        <translation>In %1 kann nichts geschrieben werden.</translation>
    </message>
    <message>
        <source>How-To Guide</source>
        <translation>Anleitung</translation>
    </message>
    <message>
        <source>The picture of step %1 can&apos;t be read.</source>
        <translation>Das Bild von Schritt %1 ist nicht lesbar.</translation>
    </message>
    <message>
        <source>Step %1. %2</source>
        <translation>Schritt %1. %2</translation>
    </message>
    <message>
        <source>The guide is too long for one picture.</source>
        <translation>Die Anleitung ist zu lang für ein Bild.</translation>
    </message>
    <message>
        <source>Couldn&apos;t write the PDF</source>
        <translation>Das PDF konnte nicht geschrieben werden</translation>
    </message>
    <message>
        <source>%1 – Step %2</source>
        <translation>%1 – Schritt %2</translation>
    </message>
    <message>
        <source>Saved %1 steps to the “%2” collection</source>
        <translation>%1 Schritte in der Sammlung „%2“ gesichert</translation>
    </message>
    <message>
        <source>Click in %1</source>
        <translation>In %1 klicken</translation>
    </message>
    <message>
        <source>Click here</source>
        <translation>Hier klicken</translation>
    </message>
    <message>
        <source>Open the “%1” menu</source>
        <translation>Das Menü „%1“ öffnen</translation>
    </message>
    <message>
        <source>Choose “%1”</source>
        <translation>„%1“ wählen</translation>
    </message>
    <message>
        <source>Toggle “%1”</source>
        <translation>„%1“ umschalten</translation>
    </message>
    <message>
        <source>Select “%1”</source>
        <translation>„%1“ auswählen</translation>
    </message>
    <message>
        <source>Click the “%1” link</source>
        <translation>Auf den Link „%1“ klicken</translation>
    </message>
    <message>
        <source>Click “%1”</source>
        <translation>Auf „%1“ klicken</translation>
    </message>
    <message>
        <source>Click the text field</source>
        <translation>In das Textfeld klicken</translation>
    </message>
    <message>
        <source>Click the “%1” field</source>
        <translation>In das Feld „%1“ klicken</translation>
    </message>
    <message>
        <source>There is no memory for the picture of a step.</source>
        <translation>Für das Bild eines Schrittes reicht der Speicher nicht.</translation>
    </message>
    <message>
        <source>Step %1</source>
        <translation>Schritt %1</translation>
    </message>
    <message>
        <source>Claude is writing step %1 of %2…</source>
        <translation>Claude schreibt Schritt %1 von %2 …</translation>
    </message>
    <message>
        <source>Looking for emails, numbers and keys to hide…</source>
        <translation>E-Mails, Nummern und Schlüssel zum Verbergen werden gesucht …</translation>
    </message>
    <message>
        <source>Step %1 · %2</source>
        <translation>Schritt %1 · %2</translation>
    </message>
    <message>
        <source>The picture of this step can&apos;t be read.</source>
        <translation>Das Bild dieses Schrittes ist nicht lesbar.</translation>
    </message>
    <message>
        <source>Add an Anthropic API key in Settings › AI &amp; Sharing first</source>
        <translation>Zuerst einen Anthropic-API-Schlüssel unter Einstellungen › KI &amp; Teilen eintragen</translation>
    </message>
    <message>
        <source>%1 · %2 of %3</source>
        <translation>%1 · %2 von %3</translation>
    </message>
    <message>
        <source>Writing the web page…</source>
        <translation>Webseite wird geschrieben …</translation>
    </message>
    <message>
        <source>Writing the PDF…</source>
        <translation>PDF wird geschrieben …</translation>
    </message>
    <message>
        <source>Building the guide…</source>
        <translation>Anleitung wird erstellt …</translation>
    </message>
    <message>
        <source>Saving steps to the Library…</source>
        <translation>Schritte werden in der Bibliothek gesichert …</translation>
    </message>
    <message>
        <source>Click anywhere to capture a step</source>
        <translation>Irgendwo klicken, um einen Schritt aufzunehmen</translation>
    </message>
    <message>
        <source>No displays could be captured. Check Screen Recording permission.</source>
        <translation>Kein Bildschirm konnte aufgenommen werden. Bitte die Berechtigung für Bildschirmaufnahmen prüfen.</translation>
    </message>
    <message>
        <source>Tip: allow Accessibility in Settings so steps say what you clicked</source>
        <translation>Tipp: Barrierefreiheit in den Einstellungen erlauben, damit Schritte sagen, was angeklickt wurde</translation>
    </message>
    <message>
        <source>Couldn&apos;t capture — see Settings › Permissions &amp; Help</source>
        <translation>Aufnahme nicht möglich — siehe Einstellungen › Berechtigungen &amp; Hilfe</translation>
    </message>
    <message>
        <source>Step %1: %2</source>
        <translation>Schritt %1: %2</translation>
    </message>
    <message>
        <source>captured</source>
        <translation>aufgenommen</translation>
    </message>
    <message>
        <source>There is no room for the steps: the folder %1 can&apos;t be made.</source>
        <translation>Für die Schritte ist kein Platz: Der Ordner %1 kann nicht angelegt werden.</translation>
    </message>
    <message>
        <source>Another program is working on these steps.</source>
        <translation>Ein anderes Programm arbeitet an diesen Schritten.</translation>
    </message>
    <message>
        <source>The folder %1 can&apos;t be written.</source>
        <translation>In den Ordner %1 kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>Only %1 of %2 steps were saved to the “%3” collection. %4</source>
        <translation>Nur %1 von %2 Schritten wurden in der Sammlung „%3“ gesichert. %4</translation>
    </message>
    <message>
        <source>Some captions stayed as they were. %1</source>
        <translation>Einige Beschriftungen blieben, wie sie waren. %1</translation>
    </message>
    <message>
        <source>There was no room on disk for this guide when it began.</source>
        <translation>Für diese Anleitung war auf der Festplatte kein Platz, als sie begann.</translation>
    </message>
</context>
<context>
    <name>StepsUiTexts</name>
    <message>
        <source>Describe this step</source>
        <translation>Diesen Schritt beschreiben</translation>
    </message>
    <message>
        <source>Unfinished Guides</source>
        <translation>Angefangene Anleitungen</translation>
    </message>
    <message numerus="yes">
        <source>%n guide(s) were not finished</source>
        <translation>
            <numerusform>%n Anleitung wurde nicht fertiggestellt</numerusform>
            <numerusform>%n Anleitungen wurden nicht fertiggestellt</numerusform>
        </translation>
    </message>
    <message>
        <source>How-To Guide</source>
        <translation>Anleitung</translation>
    </message>
    <message>
        <source>%1, %2, %3</source>
        <translation>%1, %2, %3</translation>
    </message>
    <message numerus="yes">
        <source>%n step(s)</source>
        <translation>
            <numerusform>%n Schritt</numerusform>
            <numerusform>%n Schritte</numerusform>
        </translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Guide title</source>
        <translation>Titel der Anleitung</translation>
    </message>
    <message>
        <source>Mark clicks</source>
        <translation>Klicks markieren</translation>
    </message>
    <message>
        <source>Mark Clicks</source>
        <translation>Klicks markieren</translation>
    </message>
    <message>
        <source>Circle where you clicked and number each step. Edited steps keep their own markers.</source>
        <translation>Umkreisen, wo geklickt wurde, und die Schritte nummerieren. Bearbeitete Schritte behalten ihre eigenen Marken.</translation>
    </message>
    <message>
        <source>Hide emails, numbers &amp; keys</source>
        <translation>E-Mails, Nummern &amp; Schlüssel verbergen</translation>
    </message>
    <message>
        <source>Auto-Redact</source>
        <translation>Selbst schwärzen</translation>
    </message>
    <message>
        <source>Pixelates sensitive text found in each step, on your Mac. Edited steps keep their own blurs.</source>
        <translation>Verpixelt vertraulichen Text, der in den Schritten gefunden wird, auf diesem Rechner. Bearbeitete Schritte behalten ihre eigene Verpixelung.</translation>
    </message>
    <message>
        <source>Improve Captions</source>
        <translation>Texte verbessern</translation>
    </message>
    <message>
        <source>Claude rewrites each step as a clear instruction (uses your API key).</source>
        <translation>Claude schreibt jeden Schritt als klare Anweisung neu (mit Ihrem API-Schlüssel).</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Save as a PDF, a web page you can host, Markdown, or individual Library captures.</source>
        <translation>Als PDF, als Webseite, als Markdown oder als einzelne Aufnahmen in der Bibliothek sichern.</translation>
    </message>
    <message>
        <source>PDF…</source>
        <translation>PDF …</translation>
    </message>
    <message>
        <source>Web Page &amp;&amp; Markdown Folder…</source>
        <translation>Ordner mit Webseite &amp;&amp; Markdown …</translation>
    </message>
    <message>
        <source>Save Steps to Library</source>
        <translation>Schritte in der Bibliothek sichern</translation>
    </message>
    <message>
        <source>Create Guide</source>
        <translation>Anleitung erstellen</translation>
    </message>
    <message>
        <source>Builds one tall guide image and opens it in the editor for final touches.</source>
        <translation>Erstellt ein hohes Bild der ganzen Anleitung und öffnet es im Editor für den letzten Schliff.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Widerrufen</translation>
    </message>
    <message numerus="yes">
        <source>%n step(s) deleted</source>
        <translation>
            <numerusform>%n Schritt gelöscht</numerusform>
            <numerusform>%n Schritte gelöscht</numerusform>
        </translation>
    </message>
    <message>
        <source>Steps</source>
        <translation>Schritte</translation>
    </message>
    <message>
        <source>Edit Step</source>
        <translation>Schritt bearbeiten</translation>
    </message>
    <message>
        <source>Change Caption</source>
        <translation>Text ändern</translation>
    </message>
    <message>
        <source>Revert Edits</source>
        <translation>Bearbeitung verwerfen</translation>
    </message>
    <message>
        <source>Reset position</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>Nach unten</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n Step(s)</source>
        <translation>
            <numerusform>%n Schritt löschen</numerusform>
            <numerusform>%n Schritte löschen</numerusform>
        </translation>
    </message>
    <message>
        <source>Del</source>
        <translation>Entf</translation>
    </message>
    <message>
        <source>Picture of the step</source>
        <translation>Bild des Schrittes</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Open this step in the full editor — arrows, text, blur, crop and more. Save or close to bring it back.</source>
        <translation>Diesen Schritt im Editor öffnen — Pfeile, Text, Verpixelung, Zuschnitt und mehr. Sichern oder Schließen bringt ihn zurück.</translation>
    </message>
    <message>
        <source>Move this step earlier in the guide.</source>
        <translation>Diesen Schritt in der Anleitung nach vorn rücken.</translation>
    </message>
    <message>
        <source>Move this step later in the guide.</source>
        <translation>Diesen Schritt in der Anleitung nach hinten rücken.</translation>
    </message>
    <message>
        <source>Delete Step</source>
        <translation>Schritt löschen</translation>
    </message>
    <message>
        <source>Remove this step from the guide.</source>
        <translation>Diesen Schritt aus der Anleitung entfernen.</translation>
    </message>
    <message>
        <source>Caption of step %1</source>
        <translation>Text von Schritt %1</translation>
    </message>
    <message>
        <source>Step %1</source>
        <translation>Schritt %1</translation>
    </message>
    <message>
        <source>Edited · Double-click to keep editing</source>
        <translation>Bearbeitet · Doppelklick, um weiter zu bearbeiten</translation>
    </message>
    <message>
        <source>Revert</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Go back to the original screenshot with the automatic marker.</source>
        <translation>Zurück zum ursprünglichen Bild mit der selbst gesetzten Marke.</translation>
    </message>
    <message>
        <source>Drag the marker to move it · double-click to edit</source>
        <translation>Marke ziehen, um sie zu versetzen · Doppelklick bearbeitet</translation>
    </message>
    <message>
        <source>Click the image to add a marker · double-click to edit</source>
        <translation>Ins Bild klicken, um eine Marke zu setzen · Doppelklick bearbeitet</translation>
    </message>
    <message>
        <source>Put the marker back where you actually clicked.</source>
        <translation>Die Marke dahin zurücksetzen, wo wirklich geklickt wurde.</translation>
    </message>
    <message>
        <source>Add Step</source>
        <translation>Schritt hinzufügen</translation>
    </message>
    <message>
        <source>Capture the screen now without clicking — for hover menus and tooltips.</source>
        <translation>Den Bildschirm jetzt ohne Klick aufnehmen — für Menüs und Hinweise unter dem Zeiger.</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Clicks aren&apos;t captured while paused.</source>
        <translation>In der Pause werden keine Klicks aufgenommen.</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Stop and review your guide.</source>
        <translation>Beenden und die Anleitung durchsehen.</translation>
    </message>
    <message>
        <source>Stop and discard these steps.</source>
        <translation>Beenden und diese Schritte verwerfen.</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Recording steps · %1</source>
        <translation>Schritte werden aufgezeichnet · %1</translation>
    </message>
    <message>
        <source>Saving step…</source>
        <translation>Schritt wird gesichert …</translation>
    </message>
    <message>
        <source>No Steps Left</source>
        <translation>Keine Schritte mehr</translation>
    </message>
    <message>
        <source>Ctrl+Z brings the last ones back.</source>
        <translation>Strg+Z bringt die letzten zurück.</translation>
    </message>
    <message>
        <source>Web Page &amp; Markdown Folder</source>
        <translation>Ordner mit Webseite &amp; Markdown</translation>
    </message>
    <message>
        <source>Export Here</source>
        <translation>Hierhin exportieren</translation>
    </message>
    <message>
        <source>Save as PDF</source>
        <translation>Als PDF sichern</translation>
    </message>
    <message>
        <source>PDF document (*.pdf)</source>
        <translation>PDF-Dokument (*.pdf)</translation>
    </message>
    <message>
        <source>Private text may be visible</source>
        <translation>Vertrauliches könnte sichtbar sein</translation>
    </message>
    <message numerus="yes">
        <source>%n step(s) couldn’t be searched for emails, numbers and keys, so nothing was exported.</source>
        <translation>
            <numerusform>%n Schritt konnte nicht nach E-Mails, Nummern und Schlüsseln durchsucht werden; darum wurde nichts exportiert.</numerusform>
            <numerusform>%n Schritte konnten nicht nach E-Mails, Nummern und Schlüsseln durchsucht werden; darum wurde nichts exportiert.</numerusform>
        </translation>
    </message>
    <message>
        <source>Search again, hide by hand what is private in them (Edit), or delete them. They are selected in the list.</source>
        <translation>Noch einmal suchen, Vertrauliches darin von Hand verbergen (Bearbeiten) oder sie löschen. Sie sind in der Liste ausgewählt.</translation>
    </message>
    <message>
        <source>Search Again</source>
        <translation>Noch einmal suchen</translation>
    </message>
    <message>
        <source>Keep this guide?</source>
        <translation>Diese Anleitung behalten?</translation>
    </message>
    <message>
        <source>It has changes that were not exported. Lumenpost can keep it and offer it when it is started again.</source>
        <translation>Sie hat Änderungen, die nicht exportiert wurden. Lumenpost kann sie behalten und beim nächsten Start anbieten.</translation>
    </message>
    <message>
        <source>Keep for Later</source>
        <translation>Für später behalten</translation>
    </message>
    <message>
        <source>Discard this guide?</source>
        <translation>Diese Anleitung verwerfen?</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Noch einmal versuchen</translation>
    </message>
    <message>
        <source>It has changes that were not exported, and it can’t be kept on disk. Export it before you close it.</source>
        <translation>Sie enthält Änderungen, die nicht exportiert wurden, und kann nicht auf der Festplatte behalten werden. Exportiere sie, bevor du sie schließt.</translation>
    </message>
</context>
<context>
    <name>UiTexts</name>
    <message>
        <source>Saturation and brightness</source>
        <translation>Sättigung und Helligkeit</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>Farbton</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Hexadecimal color</source>
        <translation>Farbe hexadezimal</translation>
    </message>
    <message>
        <source>You can go on where you left off.</source>
        <translation>Es geht dort weiter, wo aufgehört wurde.</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>saturation %1%, brightness %2%</source>
        <translation>Sättigung %1 %, Helligkeit %2 %</translation>
    </message>
    <message>
        <source>Context menu</source>
        <translation>Kontextmenü</translation>
    </message>
</context>
</TS>
