<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>AppTexts</name>
    <message>
        <source>Lumenpost can&apos;t see your screen yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quit &amp;&amp; Reopen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lumenpost didn&apos;t quit normally last time — Settings › Help can make a diagnostics file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag to select  ·  Click a window  ·  Return for full screen  ·  Esc to cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select the area to scroll  ·  Click a window  ·  Esc to cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select an area to record  ·  Click a window  ·  Return for full screen  ·  Esc to cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown Lumenpost link</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No preset named “%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording saved to Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t save to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Captured &amp; copied to clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved to Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 was changed elsewhere, so its earlier objects were set aside</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 can’t be read as a picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unsaved edits can’t be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t open %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Images</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No captures to pin yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lumenpost can&apos;t keep “%1”, which tells later starts that it runs.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lumenpost runs already, but doesn&apos;t answer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Later starts of Lumenpost can&apos;t be handed over.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture Region or Window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture Full Screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture in 3 Seconds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scrolling Capture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record Screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Finish Steps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record Steps (How-To Guide)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Grab Text from Screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Library…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pin Last Capture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Image…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close All Pins</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Editor After Capture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Welcome &amp; Permissions…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quit Lumenpost</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tidegrasp is now Lumenpost — your captures and settings came along</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lumenpost couldn&apos;t read an image from the selection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop shows no tray: start Lumenpost again, or press %1, for the capture panel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is a sound missing in the film: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved as PNG: %1 can’t hold a picture of %2 × %3 pixels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How to … in %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How-To Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The guide wasn&apos;t exported; it is offered when Lumenpost starts again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Image copied to clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pin</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trash</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Moved to the Trash</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Panel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Steps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The whole picture doesn’t fit in memory.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop shows no tray: start Lumenpost again for the capture panel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go to Pinned Image</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BaseTexts</name>
    <message>
        <source>there is a folder of that name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it is no regular file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is no regular file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it could not be encoded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>your share of the disk is used up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file would be larger than is allowed here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the disk can&apos;t be written to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>permission denied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no such folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the name is too long</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>too many files are open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the disk reports an error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no file %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t read %1: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another program is using %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not valid JSON: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A part of Lumenpost is missing (%1): install it again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is a folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is too large to be read: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no place for temporary files: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This needs a part of Lumenpost that isn’t installed: the package “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CaptureTexts</name>
    <message>
        <source>The region is too large.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>That window is no longer available.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No displays could be captured. Check Screen Recording permission.</source>
        <translation>No displays could be captured. Check that this session lets programs see the screen.</translation>
    </message>
    <message>
        <source>No display shows anything of that region.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Auto-scrolling…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scroll the area slowly</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scroll back a little</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scrolling back…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture is long, and it goes on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing in that region scrolled.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Something in that region scrolled, but it could not be followed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture ends early: what came next could not be followed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture has reached its limit, and the content goes on below it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>So many rows look alike that some may be missing from the picture.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CaptureUiTexts</name>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n frame(s)</source>
        <translation>
            <numerusform>%n frame</numerusform>
            <numerusform>%n frames</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 · %2 px</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go On</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>As many frames again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep what was captured.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Arrow keys move the pointer, with Shift faster. Space begins and ends an area. Return takes it, Esc cancels.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 by %2 at %3, %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Area begins at %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose an area or a window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose what to capture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scrolling capture</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CliTexts</name>
    <message>
        <source>Include the pointer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wait this many seconds first</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Also copy it to the clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write this file instead of a new one in the Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no display %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A whole display</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Its id, as `displays` lists it; else the one under the pointer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A part of the desktop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One window alone, also when it is covered</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Its id, as `windows` lists it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Without its title bar and frame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>List the displays that can be captured</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One JSON array</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>List the windows that can be captured, front to back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take a picture of the screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture what is on the screen, mark it up, keep it and share it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the help of every command</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use this folder as the save folder, for this call alone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print the manual page</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print a shell&apos;s completion script</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: see %2 --help.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The result could not be printed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It was given up before it was done.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy files into a folder, converted and scaled if asked</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Images and films; films are copied as they are</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folder; it is made if it isn&apos;t there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The most pixels of the longer edge; nothing is enlarged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folder %1 could not be made.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exporting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make a PDF with a page for each image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stands on the first page</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Writing pages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture would be too large or too small to be made.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make one picture of several</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pixels between and around the pictures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Its extension says the format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make the tall picture of a numbered guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The steps, in order</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stands in a band at the top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A text file with a caption a line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>List the files of the Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One JSON array with date, bytes, favorite, source and collections</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy files into the Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Images and films</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Give a file another name; its extension stays</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move files of the Library to the Trash</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The files of the Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Describing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>indexed %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>described %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>favorites %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>collections %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>sources %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>descriptions %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>texts %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no file %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not in the Library.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Star a file of the Library, or take its star</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no collection with the id %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A collection needs a name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Collections of the Library&apos;s files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One JSON array with id, name and items</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make a collection; prints its id</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Give a collection another name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete a collection; its files stay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Put files into a collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take files out of a collection; they stay in the Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The earlier states of a file: one JSON array, newest first</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go back to an earlier state; the present one becomes the newest version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has no version %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 could not be restored.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Groups of look-alike images, each newest first: one JSON array of arrays of paths</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comparing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move captures to the Trash that are older than so many days; favorites and what is in a collection stay. Prints their number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The reply holds no text.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ask the AI service about a picture, with your own key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What to ask for: describe (if not given), steps, altText, name or caption</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Upload a picture and print its public link</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; has none of the extensions png, jpg, jpeg and heic</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 can&apos;t hold %2 × %3 pixels, so the picture is written as PNG.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing to redact was found, so nothing was written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print an object that tells the coordinates and the picture&apos;s size too</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read the text in pictures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print each file with its lines and their boxes: x, y, width and height as fractions of the picture, origin at the lower left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where the text in a picture stands</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only addresses, numbers, keys and tokens</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where the faces in a picture are</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find what is private in a picture and pixelate it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What to hide: sensitive, allText or faces</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where the picture goes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print how many places were hidden, and where in pixels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw a project&apos;s objects and effects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The project&apos;s directory; or, with --project, the picture under the objects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The description of objects and effects (project.json)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where the picture goes; its extension says the format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Leave out border, shadow, corners and backdrop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is left out: it has another size than the first frame.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The whole picture doesn&apos;t fit in memory.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Join the frames of something that scrolled into one picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pictures of one size, in the order they were taken</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture to write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print how many frames were used, each step and the size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No display shows anything of that region.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scroll a region to its end and join what it showed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop after so many frames</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files whose name, application, text or description holds the query as it stands, newest first</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read the text of images that have none yet, so that search finds them. Prints their number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ask the AI service about those without a description too</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write all that is known into a file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Merge what a file knows; nothing that is there is overwritten. Prints what was new</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Put the logs and a summary of the system into one file, to be sent with a report</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no display to record.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A recording that broke off is kept as %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is a sound missing in the film: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The film itself can&apos;t be the file that is written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record the screen or a region until an interrupt, or for some seconds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop after so many seconds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Also record what is played</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Also record the microphone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write this .mov file instead of a new one in the Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The film</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Leave out what comes before this second</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Leave out what comes after this second</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn what is spoken in a film into subtitles</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write this SubRip file instead of printing it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make an animated GIF of a film, of a minute at most</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The GIF to write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make an MP4 of a film or a part of it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The MP4 to write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X,Y,WxH in points from the top left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print the path, the number of frames, each step and why it ended</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read in this language alone, such as de or deu; may be given several times. Otherwise every installed one is used where lines are in it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A kind of private text to leave as it is, beside those that the settings leave; may be given several times</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DiagnosticsTexts</name>
    <message>
        <source>Couldn&apos;t create the diagnostics file</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DocumentTexts</name>
    <message>
        <source>Indigo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sunset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ocean</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mint</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Graphite</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture could not be written as HEIC: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The HEIC picture is damaged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: there is no picture.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: pictures are written as .png, .jpg, .jpeg or .heic.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: files of this kind hold at most %2 pixels a side, and the picture has %3 × %4.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: the picture could not be encoded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is cut off: its end is missing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is damaged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is too large: it has %2 × %3 pixels, and at most %4 million pixels can be worked with.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not a picture that Lumenpost can read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n pasted picture(s) can&apos;t be shown: too large or damaged. What is stored of them stays.</source>
        <translation>
            <numerusform>%n pasted picture can&apos;t be shown: too large or damaged. What is stored of it stays.</numerusform>
            <numerusform>%n pasted pictures can&apos;t be shown: too large or damaged. What is stored of them stays.</numerusform>
        </translation>
    </message>
    <message>
        <source>This is no readable project, it is not one JSON object.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is no readable project, a key is missing or has the wrong type.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is no readable project, a key of an object is missing or has the wrong type.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no project at %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t make the folder %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pick, move and resize objects. Double-click text to edit it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click to select, drag handles to resize, double-click text to edit. Right-click for arrange &amp; duplicate.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Arrow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Point at something important. Choose tapered, thin, double or curved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag to draw an arrow. Hold ⇧ to snap to 45°. Pick a style above.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Box</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Frame an area with a box — outline, tinted or solid.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag to draw a box. Hold ⇧ for a square.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Oval</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Circle something with an oval — outline, tinted or solid.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag to draw an oval. Hold ⇧ for a circle.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw a straight line, solid or dashed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag to draw a line. Hold ⇧ to snap to 45°.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw freehand, like a marker.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw freehand by dragging.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Highlight</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mark text with a see-through highlighter.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag across text to highlight it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add a caption. Plain text or a label with a colored box.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click where the text should go, type, then press Return.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Callout</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add a speech bubble with text and a tail you can aim.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag to draw a speech bubble, then type. Drag the tail handle to point it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number the steps of a process (1 2 3 or A B C).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click to drop numbered steps — they count up automatically.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stamp</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drop a symbol, emoji or keyboard key, like ✓, ⚠️ or ⌘.</source>
        <translation>Drop a symbol, emoji or keyboard key, like ✓, ⚠️ or Ctrl.</translation>
    </message>
    <message>
        <source>Choose a stamp above, then click to place it (or drag to size it).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Blur</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide private details like names, emails or numbers.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag over anything private to pixelate it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Spotlight</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dim everything except the area you drag.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag around what matters — everything else is dimmed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Magnify</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add a 2× magnifier bubble to show fine detail.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag to add a magnifier bubble that zooms in 2×.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Crop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep only the area you drag.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag to choose the area to keep. ⌘Z undoes it.</source>
        <translation>Drag to choose the area to keep. Ctrl+Z undoes it.</translation>
    </message>
    <message>
        <source>Cut Out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove a strip from the middle and join the rest with a torn edge.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag across the part to remove — the image closes the gap with a torn edge.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measure</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measure distances in pixels — handy for checking spacing in designs.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag between two points to measure them. Hold ⇧ to snap to 45°.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A pasted image you can move and resize.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pasted image. Drag to move, drag handles to resize.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tapered</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Thin</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Double</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Curved</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Outline</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tinted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Solid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dashed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Plain</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Label</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Filled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 2 3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A B C</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Columns</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>EditorTexts</name>
    <message>
        <source>check mark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cross</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>question mark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>star</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>heart</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>thumbs up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>thumbs down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>light bulb</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>flag</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>lock</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>lightning bolt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>bell</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>pointer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>clicking pointer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>pointing hand</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>arrow up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>arrow down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>arrow left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>arrow right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>black</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>white</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>light gray</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>gray</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dark gray</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>red</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>orange</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>yellow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>green</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cyan</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>blue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>purple</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>pink</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>brown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dark %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>light %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step %1, %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stamp %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measurement %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Picked %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Capture, %1 by %2 pixels, %n object(s)</source>
        <translation>
            <numerusform>Capture, %1 by %2 pixels, %n object</numerusform>
            <numerusform>Capture, %1 by %2 pixels, %n objects</numerusform>
        </translation>
    </message>
    <message>
        <source>. Tab moves between objects.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Commands</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Command palette</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type a command…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No matching commands</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No text found in that area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No text found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copied %1 line of text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copied %1 lines of text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Renamed to “%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Suggested Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step updated in your guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save As</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>JPEG image (*.jpg *.jpeg)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>HEIC image (*.heic)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PNG image (*.png)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pictures are saved as PNG, JPEG or HEIC.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 can’t be saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The image could not be copied.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Image copied to clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Image file copied to clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send by Email…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open in Another Program</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link copied: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Your unsaved edits are back. Save to keep them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Your unsaved picture is back. Save to keep it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Discard Edits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Discard Picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unsaved edits can’t be kept: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unsaved Pictures</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n picture(s) were never saved</source>
        <translation>
            <numerusform>%n picture was never saved</numerusform>
            <numerusform>%n pictures were never saved</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy the finished image, with effects, to paste anywhere.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save to your Library. Objects stay editable when you reopen it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save As…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Share…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Upload &amp; Copy Link</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pin</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pin to Screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Float this image above all windows as a reference while you work.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take back the last change.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Redo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bring back the change you just undid.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fit to Window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom to Fit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Actual Size (100%)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gradient Backdrop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Toggle Gradient Backdrop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Border</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Toggle Border</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drop Shadow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Toggle Drop Shadow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rounded Corners</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Toggle Rounded Corners</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Emails, Numbers &amp; API Keys</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Redact Emails, Numbers &amp; Keys</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Redact All Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Faces</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Blur Faces</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy All Text from Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy Text from Area…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Eyedropper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pick Color from Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click this, then click the image to pick up one of its colors.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Describe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AI: Describe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step-by-Step Instructions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AI: Step-by-Step Instructions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Alt Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AI: Alt Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rename with AI</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AI: Rename</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Duplicate Object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bring to Front</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send to Back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag Out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag this into Mail, Slack, Finder or any app to drop the finished image.</source>
        <translation>Drag this into mail, a chat, the file manager or any program to drop the finished image.</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cut</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paste</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All Commands</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Effects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add a gradient backdrop, border, drop shadow or rounded corners to the finished image.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Redact</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Automatically blur emails, numbers, API keys, all text or faces. Review each blur afterwards.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AI</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Have Claude describe the image, write step-by-step instructions or alt text, or name it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Share</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Share, upload and copy a link, or Save As a new file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Presets</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Apply a saved tool, color and style in one click — or save your own.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pinch or ⌘-scroll on the image. Hold Space and drag to move around. ⌘0 fits, ⌘1 is 100%.</source>
        <translation>Pinch or scroll with Ctrl on the image. Hold Space and drag to move around. Ctrl+0 fits, Ctrl+1 is 100%.</translation>
    </message>
    <message>
        <source>Untitled Capture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture could not be written to a temporary file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Generated by Claude — check before sharing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Style Preset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saves the current tool (%1), color, size and style.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>My %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name of the preset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved preset “%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Something went wrong</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Backdrop Style</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Border Color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unsaved edits of an earlier state of this picture were set aside</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 Tool</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text of the object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rounded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Serif</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mono</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Marker</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Selected %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Red</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Orange</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Yellow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Green</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Blue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Purple</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Black</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>White</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing selected — click an object to change it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Font</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Typeface for text and callouts.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose Stamp</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pick a symbol, emoji or keyboard key to place on the image.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>More Colors</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open the color picker to choose any color.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Current Style as Preset…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Preset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text size.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Line thickness.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Style</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Style for new %1 objects and the one selected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Redacted %n area(s) — review them, ⌘Z to undo</source>
        <translation>
            <numerusform>Redacted %n area — review it, Ctrl+Z to undo</numerusform>
            <numerusform>Redacted %n areas — review them, Ctrl+Z to undo</numerusform>
        </translation>
    </message>
    <message>
        <source>No faces found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing to redact</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Symbols</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Emoji</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keys</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Working…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag over text in the image to copy it · Esc to cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click anywhere on the image to pick its color · Esc to cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>  ·  ⌘K for all commands</source>
        <translation>  ·  Ctrl+K for all commands</translation>
    </message>
    <message numerus="yes">
        <source>%n object(s)</source>
        <translation>
            <numerusform>%n object</numerusform>
            <numerusform>%n objects</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 × %2 px</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fit · %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Red Arrow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Yellow Highlight</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Blue Callout</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Purple Steps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type, then Return</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type your callout, then Return (⌥↩ for a new line)</source>
        <translation>Type your callout, then Return (Alt+Return for a new line)</translation>
    </message>
    <message>
        <source>Copy text in this area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove %1 px</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved as %1: %2 files can’t hold a picture of this size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Uploaded: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 by %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, %2 at %3, %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 by %2 at %3, %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Columns %1 to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rows %1 to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>F6 goes to the bars.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Return places: %1. Arrow keys move it, with Alt they size it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go to Pinned Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tools and actions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Options</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Kind of stamp</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stamps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Status</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Arrow keys move the point, ⇧ faster · Return picks its color · Esc cancels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>  ·  F6 for the bars</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>More</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Arrow keys move the frame, with Alt size it, ⇧ faster · Return takes it · Esc cancels</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LibraryTexts</name>
    <message>
        <source>Side by Side</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stacked</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Grid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 could not be encoded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Original</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fit Each Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>US Letter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There are no pictures for the PDF.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture could not be copied.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: the picture could not be encoded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no file %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is neither an image nor a film of the Library.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t copy %1 into the Library: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is no name for a file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not in the Library.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not the data of a Library that this version can read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All Captures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Screenshots</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Favorites</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Today</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last 7 Days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last 30 Days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Newest First</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Oldest First</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Any Date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Past Week</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Past Month</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Past Year</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Indexing text in captures… %1 of %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Yesterday</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This Week</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture could not be copied: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture could not be copied: there is no clipboard.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is nothing to copy in %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is too large for a picture: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture would be too large or too small to be made.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t create the guide.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 can only be had back from the Trash.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LibraryUiTexts</name>
    <message>
        <source>Show in Finder</source>
        <translation>Show in File Manager</translation>
    </message>
    <message>
        <source>Show your captures folder in Finder.</source>
        <translation>Show your captures folder in the file manager.</translation>
    </message>
    <message>
        <source>Press ⌃⇧C or click the menu bar icon to capture. You can also drop images here.</source>
        <translation>Press Super+Shift+C or click the tray icon to capture. You can also drop images here.</translation>
    </message>
    <message numerus="yes">
        <source>Moved %n item(s) to the Trash</source>
        <translation>
            <numerusform>Moved %n item to the Trash</numerusform>
            <numerusform>Moved %n items to the Trash</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Imported %n item(s)</source>
        <translation>
            <numerusform>Imported %n item</numerusform>
            <numerusform>Imported %n items</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n items</source>
        <translation>
            <numerusform>%n item</numerusform>
            <numerusform>%n items</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n selected</source>
        <translation>
            <numerusform>%n selected</numerusform>
            <numerusform>%n selected</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Move %n Items to Trash</source>
        <translation>
            <numerusform>Move %n Item to Trash</numerusform>
            <numerusform>Move %n Items to Trash</numerusform>
        </translation>
    </message>
    <message>
        <source>Copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rename</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Added to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rename Collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None of these is a picture or a video</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Images and videos</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Collection…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove from This Collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open in Video Editor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open in Editor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove from Favorites</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add to Favorites</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pin to Screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rename…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add to Collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move to Trash</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Captures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Favorite</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pin to screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Star it so it shows in Favorites and is never auto-deleted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Float it above all windows as a reference.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy the image to paste anywhere.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open it in the editor.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Collections</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Apps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show only captures from a time range.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sort</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Order by date, name or file size.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search names, apps and text in images</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Thumbnail Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make the cards bigger or smaller.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add images or videos from elsewhere. You can also drop files onto the grid.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No Captures Yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing Found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try another word, or another time range.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add them to a collection, or start a new one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trash</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move them to the Trash.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Deselect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Esc</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clean Up Storage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Duplicates</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Large Files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Auto-Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Removed items go to the Trash.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking for duplicates…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No Duplicates</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Every capture looks unique.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trash All Extras</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n group(s) of look-alike captures. The newest in each group is kept.</source>
        <translation>
            <numerusform>%n group of look-alike captures. The newest in each group is kept.</numerusform>
            <numerusform>%n groups of look-alike captures. The newest in each group is kept.</numerusform>
        </translation>
    </message>
    <message>
        <source>…and %1 more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trash Extras</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete captures older than</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Never</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>30 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>90 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 year</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Runs each time Lumenpost starts. Favorites and anything in a collection are always kept.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Run Now</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Combine %n Capture(s)</source>
        <translation>
            <numerusform>Combine %n Capture</numerusform>
            <numerusform>Combine %n Captures</numerusform>
        </translation>
    </message>
    <message>
        <source>Spacing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Layout</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>White</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Transparent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Background</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create &amp; Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Original</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max %1 px</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Export %n Item(s)</source>
        <translation>
            <numerusform>Export %n Item</numerusform>
            <numerusform>Export %n Items</numerusform>
        </translation>
    </message>
    <message>
        <source>Format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recordings are copied as-is.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose Folder…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Here</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Step Guide from %n Capture(s)</source>
        <translation>
            <numerusform>Step Guide from %n Capture</numerusform>
            <numerusform>Step Guide from %n Captures</numerusform>
        </translation>
    </message>
    <message>
        <source>How To</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File names</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AI-written (Claude)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add an Anthropic API key in Settings to use AI captions.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step captions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Steps follow the order shown in the Library. The guide opens in the editor so you can add arrows and callouts.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AI Description</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy it to paste anywhere.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pin</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Finder</source>
        <translation>Folder</translation>
    </message>
    <message>
        <source>Show the file in Finder.</source>
        <translation>Show the file in the file manager.</translation>
    </message>
    <message>
        <source>Share</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move it to the Trash.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text in Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No text found (or not indexed yet).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Modified</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dimensions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Duration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>From</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Layers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Editable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Yes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send by Email…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open in Another Program</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no picture among these.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export…</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Rename %n Items…</source>
        <translation>
            <numerusform>Rename %n Item…</numerusform>
            <numerusform>Rename %n Items…</numerusform>
        </translation>
    </message>
    <message>
        <source>Combine into One Image…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select a capture to see its details.
Space previews, Return opens.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n items selected</source>
        <translation>
            <numerusform>%n item selected</numerusform>
            <numerusform>%n items selected</numerusform>
        </translation>
    </message>
    <message>
        <source>Use the bar at the bottom to export, combine, rename or file them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sidebar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show or hide what can be chosen from.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>More</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clean up storage, describe captures with AI, or open the folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clean Up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Describe Captures with AI</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Captures Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show or hide details for the selected capture.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find duplicates and large files, and set up auto-delete.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File Names</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Exported %n item(s)</source>
        <translation>
            <numerusform>Exported %n item</numerusform>
            <numerusform>Exported %n items</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n files could not be exported. %1</source>
        <translation>
            <numerusform>%n file could not be exported. %1</numerusform>
            <numerusform>%n files could not be exported. %1</numerusform>
        </translation>
    </message>
    <message>
        <source>Writing caption %1 of %2…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t write the PDF.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Combined %n Capture(s)</source>
        <translation>
            <numerusform>Combined %n Capture</numerusform>
            <numerusform>Combined %n Captures</numerusform>
        </translation>
    </message>
    <message>
        <source>Writing step %1 of %2…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t create the guide.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Renamed %n item(s)</source>
        <translation>
            <numerusform>Renamed %n item</numerusform>
            <numerusform>Renamed %n items</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Moved %n old capture(s) to the Trash</source>
        <translation>
            <numerusform>Moved %n old capture to the Trash</numerusform>
            <numerusform>Moved %n old captures to the Trash</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing old enough to remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This version can&apos;t be restored.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add an Anthropic API key in Settings first</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Starting…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Describing %1 of %2…</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Added AI descriptions to %n capture(s)</source>
        <translation>
            <numerusform>Added AI descriptions to %n capture</numerusform>
            <numerusform>Added AI descriptions to %n captures</numerusform>
        </translation>
    </message>
    <message>
        <source>Everything is already described</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Export %n Page PDF</source>
        <translation>
            <numerusform>Export %n Page PDF</numerusform>
            <numerusform>Export %n Page PDF</numerusform>
        </translation>
    </message>
    <message>
        <source>How-To Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Captions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Page Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pages follow the order shown in the Library.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create PDF…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create PDF</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 can&apos;t be shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>←  →  to browse  ·  Space or Esc to close</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Rename %n Item(s)</source>
        <translation>
            <numerusform>Rename %n Item</numerusform>
            <numerusform>Rename %n Items</numerusform>
        </translation>
    </message>
    <message>
        <source>Pattern</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start numbering at</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use {n} for a number, {date} for the capture date, {name} for the current name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save copies as PNG, JPG or HEIC, optionally resized.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make a PDF with one page per capture, with a title and captions.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Combine</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Join captures side by side, stacked or in a grid.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make one tall step-by-step guide image with a title, numbers and captions.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rename them all with a pattern like “Bug {n}”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extra</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Less</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restore</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go back to an earlier save. The current version is kept too, so you can switch back.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n earlier version(s)</source>
        <translation>
            <numerusform>%n earlier version</numerusform>
            <numerusform>%n earlier versions</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Put %n item(s) back</source>
        <translation>
            <numerusform>Put %n item back</numerusform>
            <numerusform>Put %n items back</numerusform>
        </translation>
    </message>
    <message>
        <source>Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n picture(s) could not be read and were left out</source>
        <translation>
            <numerusform>%n picture could not be read and was left out</numerusform>
            <numerusform>%n pictures could not be read and were left out</numerusform>
        </translation>
    </message>
    <message>
        <source>P to play</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>P to pause</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PinsTexts</name>
    <message>
        <source>Copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pinned Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pinned image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open in Editor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Actual Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close All Pins</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Arrow keys move it, with Alt they size it. Tab goes to the next one, Esc closes it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 by %2 at %3, %4</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PlatformTexts</name>
    <message>
        <source>“%1” could not be moved to the Trash.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no file “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file “%1” could not be removed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing can open “%1” here: install xdg-utils.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The password could not be stored in “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no such password.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The password store does not answer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The password store is locked: unlock it and try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The screen is turned off for this start: unset LUMENPOST_PLATFORM to use it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no display: start Lumenpost in a desktop session, or set DISPLAY.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The display “%1” can&apos;t be reached: check DISPLAY and that its desktop session runs.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This keyboard has no such key.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lumenpost uses this shortcut already.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another program has taken this shortcut.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture could not be read from the screen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This display uses a colour depth of %1 bits, which can&apos;t be captured: set it to 24 bits.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>That window is no longer available.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>That display is no longer available.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The region is too large.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The display has gone away.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The region lies outside the screen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The screen could not be read without Lumenpost&apos;s own windows.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The window&apos;s picture is not kept by this display.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This display doesn&apos;t let programs turn the wheel: scroll by hand.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This X server lacks an extension (Composite, Render or XFixes): what lies over a window, Lumenpost&apos;s own windows too, is in its picture.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The region is empty or too large.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This display doesn&apos;t tell clicks in other programs: use “Add Step”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To free it: Settings › Keyboard › View and Customize Shortcuts.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To free it: System Settings › Keyboard › Shortcuts.</source>
        <translation>To free it: the desktop&apos;s settings › Keyboard › Shortcuts.</translation>
    </message>
    <message>
        <source>To free it: Settings › Keyboard › Application Shortcuts.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To free it: the desktop&apos;s settings › Keyboard Shortcuts.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To free it, remove it from the desktop&apos;s or the window manager&apos;s own shortcuts.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The recording couldn&apos;t be finished.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is a file named %1 already.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The film couldn&apos;t be written: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This machine&apos;s FFmpeg can&apos;t write films.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The film couldn&apos;t be encoded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The film has no sound.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This film can&apos;t be played: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>none of its pictures can be decoded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is not enough memory for the film&apos;s pictures.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no file %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it is damaged, or no film</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it is damaged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there are no pictures in it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>its pictures have no sensible size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it has no length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>its pictures are of a kind (%1) that this machine can&apos;t decode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>its sound is of a kind (%1) that this machine can&apos;t decode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The film couldn&apos;t be written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The film is too small.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There are no pictures in that part of the film.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no sound server in this session.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Speech recognition isn&apos;t available for your language right now.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The speech could not be recognised.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 refuses the connection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 can&apos;t be found; is this machine connected to a network?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 didn&apos;t answer in time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 closed the connection before its answer was complete.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No safe connection to %1 could be made.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The exchange with %1 failed: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A line break can&apos;t be part of “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The model for finding faces is missing; install Lumenpost again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The model for finding faces can&apos;t be used; install Lumenpost again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No language data for reading text is installed; the package tesseract-ocr-eng has the one for English.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture is too large to be read on this machine.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The text recognition data for “%1” can&apos;t be read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is not enough memory for a film of this size.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This display doesn&apos;t tell what is clicked and typed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There are too many open files.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This display doesn&apos;t tell its keyboard layout.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no camera that can be used.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Windows can&apos;t be shown in this Wayland session: install qt6-wayland.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop refused a picture of the screen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is not enough memory for a picture of the screen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The Wayland session doesn&apos;t answer: it may have ended.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop tells programs of no windows: capture a region instead.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop lets no program turn the wheel.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop tells programs of no windows: regions and displays can be captured, and Lumenpost&apos;s own windows are in their pictures.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This Wayland session shows Lumenpost nothing of its screen: log in to an X11 session instead.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A Wayland session doesn&apos;t tell programs what is clicked and typed in other ones.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop gives programs no shortcuts: in its settings, set a key for the command “lumenpost capture region”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Plasma gives pictures of the screen only to installed programs: install the package of Lumenpost, and start it from there.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop gave a picture that is all black.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop&apos;s portal doesn&apos;t answer: it may not be installed, or have stopped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop was not allowed to show Lumenpost the screen: allow it when it asks, or in its privacy settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop has stopped showing the screen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The screen can&apos;t be filmed: PipeWire isn&apos;t running.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop refused to have the screen filmed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop doesn&apos;t answer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop doesn&apos;t let Lumenpost film its screen: its portal for screen casts isn&apos;t installed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another display was chosen: choose “%1”, which shall be filmed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No language data for “%1” is installed; there is: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop&apos;s settings can&apos;t be changed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop no longer lets Lumenpost film the screen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nobody answered the desktop&apos;s question whether Lumenpost may see the screen: try again, and allow it.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RecordingTexts</name>
    <message>
        <source>This recording has no audio. Turn on Microphone (for your voice) or System Audio in Video mode before recording.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No speech was found. Captions come from spoken words — turn on Microphone in Video mode before recording to caption your narration.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The sound couldn&apos;t be written: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The speech recogniser %1 failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The speech recogniser %1 gave no words.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no speech recogniser %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The speech recogniser&apos;s model %1 is missing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The screen gave no picture.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>GIF export failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The film has nothing between these times: it is %1 seconds long.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no folder %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The recording couldn&apos;t be prepared: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The recording couldn&apos;t take its name: %1. It is in %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n recording(s) that broke off are in your Library now</source>
        <translation>
            <numerusform>%n recording that broke off are in your Library now</numerusform>
            <numerusform>%n recordings that broke off are in your Library now</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 What was recorded until then is kept as “%2”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The film itself can&apos;t be the file that is written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exported %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>GIF export failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RecordingUiTexts</name>
    <message>
        <source>Resume</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Finish and open the recording.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Captions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Transcribed on this Mac. Review before publishing.</source>
        <translation>Transcribed on this computer. Review before publishing.</translation>
    </message>
    <message>
        <source>Copy Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy the whole transcript as plain text.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save SRT…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save SRT</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Subtitle file that YouTube, Vimeo, Premiere and most players can load.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Listening to the recording…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Transcript copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Subtitles</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Film</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start of the trimmed part</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End of the trimmed part</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Timeline</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trim Again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag the yellow handles to cut the start and end. Exports use the trimmed part.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <translation>Show in Folder</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy the video file to paste into Mail, Slack or Finder.</source>
        <translation>Copy the video file to paste into mail, a chat or the file manager.</translation>
    </message>
    <message>
        <source>Captions…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn the speech in this recording into subtitles (SRT), transcribed on your Mac.</source>
        <translation>Turn the speech in this recording into subtitles (SRT), transcribed on your computer.</translation>
    </message>
    <message>
        <source>Exports use the trimmed range</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export GIF…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make an animated GIF (up to 60 seconds, 12 fps) — great for chat and docs.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export MP4…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save a high-quality video file. Uses the trimmed range if you trimmed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trim</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>From</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 / %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Space</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing to play</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2 %</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, %2 left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export GIF</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export MP4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Animated GIFs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MPEG-4 films</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Making GIF…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exporting MP4…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The film is no longer there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copied the film</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Showing keystrokes needs Accessibility permission (Settings › Permissions &amp; Help)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drawing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw on Screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sketch on the screen while recording — it&apos;s part of the video. Esc or click again to stop drawing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear Drawing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Erase everything you&apos;ve drawn.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Webcam unavailable — check Camera permission in Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What you save holds the trimmed part, with times from its start.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ServicesTexts</name>
    <message>
        <source>Describe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step-by-Step Instructions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Alt Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Suggested Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Caption</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t encode the image.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Claude API error (HTTP %1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Claude declined this request: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Claude declined this request.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add your Anthropic API key in Settings › AI &amp; Sharing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add an Imgur Client ID in Settings › AI &amp; Sharing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No text found</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Copied %n lines of text</source>
        <translation>
            <numerusform>Copied %n lines of text</numerusform>
            <numerusform>Copied %n lines of text</numerusform>
        </translation>
    </message>
    <message>
        <source>Imgur upload failed.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SettingsTexts</name>
    <message>
        <source>Couldn&apos;t change login item: </source>
        <translation>Couldn&apos;t change the start at login: </translation>
    </message>
    <message>
        <source>Window to Clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delayed Region</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording with Clicks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1s delay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>backdrop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>editor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Region</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scroll</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Video</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Steps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>My %1 Preset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture (panel mode)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture full screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture in 3 seconds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Grab text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scrolling capture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start / stop recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record steps (how-to guide)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pin last capture</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ShellTexts</name>
    <message>
        <source>Capture mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Presets</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Current…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the mode and options above as a one-click preset. Give it a shortcut in Settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>See All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click to open · drag out · right-click to pin or copy.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Put every option back to its default.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open any image file in the editor.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Browse, search and organize all your captures.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shortcuts, save folder, recording, AI and more.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Screen Recording Permission…</source>
        <translation>Permissions…</translation>
    </message>
    <message>
        <source>Quit Lumenpost</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>More</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Screen Recording permission and Quit.</source>
        <translation>Permissions and Quit.</translation>
    </message>
    <message>
        <source>Capture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop and open the recording.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start Steps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> Return also starts it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pin to Screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <translation>Show in File Manager</translation>
    </message>
    <message>
        <source>Image copied to clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type shortcut…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This key can&apos;t be part of a shortcut.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A shortcut needs a modifier key as well.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Region</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag a region or click a window to capture it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture the whole screen under the cursor.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scroll</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select a scrollable area; Lumenpost scrolls and stitches it into one tall image.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Video</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record a region, window or the full screen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Steps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click through a task and Lumenpost turns each click into a numbered step-by-step guide.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select an area and copy its text to the clipboard.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Editor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open each capture in the editor so you can mark it up.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy each capture to the clipboard automatically.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cursor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Include the mouse pointer in the capture.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1s Delay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wait %1 seconds first — time to open a menu or hover something.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System Audio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record sound playing on your Mac.</source>
        <translation>Record sound playing on your computer.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record your voice through the microphone. Needed for captions of your narration.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show Clicks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw a ripple wherever you click, so viewers can follow along.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show Keys</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show keyboard shortcuts you press (like ⌘C) on screen. Plain typing is never shown.</source>
        <translation>Show keyboard shortcuts you press (like Ctrl+C) on screen. Plain typing is never shown.</translation>
    </message>
    <message>
        <source>Webcam</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add a round webcam bubble you can drag anywhere.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mark Clicks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Circle each click and number the steps.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Auto-Redact</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide emails, numbers and API keys in every step (done on your Mac).</source>
        <translation>Hide emails, numbers and API keys in every step (done on your computer).</translation>
    </message>
    <message>
        <source>This desktop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tray</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Library data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Library data (*.json)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Collections, favorites, source apps, AI descriptions and the text index. Backed up automatically each day.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exported library data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Library data export failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Merges a backup into this library. Nothing existing is removed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Imported library data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Library data import failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Welcome guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show Welcome Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create Diagnostics File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Diagnostics</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saves logs, crash reports and system info (no images, no API keys) as a zip on your Desktop. Nothing is sent.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t create the diagnostics file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Permissions &amp; Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Permissions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Backdrop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mic</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clicks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keys</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove Shortcut</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Shortcut</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gives this preset a global shortcut. Click the shortcut afterwards to change it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Preset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Presets appear in the capture panel. Give one a shortcut to run it from anywhere.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save captures to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This folder can&apos;t be used</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lumenpost may not write to “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Never</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>After 30 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>After 90 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>After 1 year</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>After %n day(s)</source>
        <translation>
            <numerusform>After %n day</numerusform>
            <numerusform>After %n days</numerusform>
        </translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>General</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Image format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete old captures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Favorites and anything in a collection are always kept. Deleted items go to the Trash.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play shutter sound</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add gradient backdrop to window captures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Launch Lumenpost at login</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show quick tips when hovering over buttons</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record system audio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record microphone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show cursor in recordings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Highlight clicks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show keyboard shortcuts (needs Accessibility)</source>
        <translation>Show keyboard shortcuts</translation>
    </message>
    <message>
        <source>Webcam bubble</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recordings are saved as .mov files in your capture folder. Trim them and export MP4 or GIF from the video editor.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AI &amp; Sharing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Claude</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Anthropic API key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Auto-name captures with AI</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Used only for AI actions you trigger and for auto-naming. Images are sent to Anthropic&apos;s API. The key is stored in your Keychain.</source>
        <translation>Used only for AI actions you trigger and for auto-naming. Images are sent to Anthropic&apos;s API. The key is stored in your keyring.</translation>
    </message>
    <message>
        <source>Upload</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Imgur Client ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Register…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The page couldn&apos;t be opened</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Get a Client ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Register a free application with Imgur, choosing anonymous usage without a callback, and paste its Client ID above. That enables “Upload &amp; Copy Link”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No setting has these words.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lumenpost Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” uses %2 already.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another program has taken %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is used by “%2”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open the capture panel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use the Print key as well</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print takes a region, Shift+Print the screen, Alt+Print the window in front, Ctrl+Print a region after 3 seconds.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All shortcuts as they were at first</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Screen Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Required — lets Lumenpost see your screen to capture it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Optional — auto-scrolling capture and showing keystrokes in recordings.</source>
        <translation>Optional — auto-scrolling captures and showing keystrokes in recordings.</translation>
    </message>
    <message>
        <source>Optional — record your voice in screen recordings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Optional — webcam bubble in recordings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Speech Recognition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Optional — automatic captions for recordings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Accessibility bus</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Guides name the buttons and fields that you click.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Guides can&apos;t name what you click.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sound server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recordings can have the computer&apos;s sound and your voice.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recordings have no sound.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recordings can show you in a bubble.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No camera is connected: recordings have no webcam bubble.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text recognition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text in captures is found, copied and redacted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no language data: text in captures isn&apos;t recognized.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Speech model</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Captions are made from what is said in recordings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Captions can&apos;t be made from speech.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Desktop portals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lumenpost follows the desktop&apos;s light or dark look.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop&apos;s light or dark look isn&apos;t followed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keyring</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Your API key is kept with the desktop&apos;s passwords.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Your API key is kept in a file that only you can read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Required</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Granted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Allow…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shows the macOS permission prompt.</source>
        <translation>Asks the desktop for this permission.</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opens System Settings › Privacy &amp; Security. Turn Lumenpost on, then come back.</source>
        <translation>Opens the desktop&apos;s settings. Allow it there, then come back.</translation>
    </message>
    <message>
        <source>Languages: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The package “%1” brings it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is there, but not for you: join the group “video” and log in again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Works</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Barred</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The Lumenpost icon opens the capture panel and the menu.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop shows no tray. Start Lumenpost again, or use the panel&apos;s shortcut, to open the capture panel.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Welcome to Lumenpost</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture, mark up and share anything on your screen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture a region, window, full screen or a long scrolling page</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record your screen with audio, webcam and click highlights</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Annotate with arrows, callouts, steps, blur and more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find everything later in your searchable Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>macOS asks before any app can see your screen. Only Screen Recording is required; the rest turn on extra features and can be granted later in Settings.</source>
        <translation>This is what your desktop lets Lumenpost do. Only seeing the screen is required; the rest turns on extra features, and Settings tells later what is missing.</translation>
    </message>
    <message>
        <source>After granting Screen Recording for the first time, macOS may ask you to quit and reopen Lumenpost.</source>
        <translation>Settings › Permissions &amp; Help tells which parts of this desktop are missing, and which package brings them.</translation>
    </message>
    <message>
        <source>Press the shortcut anywhere, or click the Lumenpost icon in the menu bar.</source>
        <translation>Press the shortcut anywhere, or click the Lumenpost icon in the tray.</translation>
    </message>
    <message>
        <source>Drag to select · click a window · Return for full screen · Esc to cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture Now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Continue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture panel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>IPv6 addresses</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Addresses of network devices</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bank accounts (IBAN)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What stands after “password”, “token” and the like</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Long keys with + and /</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Automatic redaction also hides</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>E-mail addresses, telephone and other long numbers, and the keys of well-known services are hidden in any case.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set in the Desktop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy These Lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy These Commands</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop gives programs no shortcuts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Its own keys can run Lumenpost&apos;s commands instead: the keys below are put among its custom shortcuts.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Its own keys can run Lumenpost&apos;s commands instead: put these lines into its configuration, and have it read that again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Its own keys can run Lumenpost&apos;s commands instead: set them in its keyboard settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop&apos;s keys are set</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Commands for the desktop&apos;s keys</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StepsTexts</name>
    <message>
        <source>The folder %1 can&apos;t be made.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing can be written into %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How-To Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture of step %1 can&apos;t be read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step %1. %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The guide is too long for one picture.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t write the PDF</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 – Step %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved %1 steps to the “%2” collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click in %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open the “%1” menu</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose “%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Toggle “%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select “%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click the “%1” link</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click “%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click the text field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click the “%1” field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no memory for the picture of a step.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Claude is writing step %1 of %2…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking for emails, numbers and keys to hide…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step %1 · %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture of this step can&apos;t be read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add an Anthropic API key in Settings › AI &amp; Sharing first</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 · %2 of %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Writing the web page…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Writing the PDF…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Building the guide…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saving steps to the Library…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click anywhere to capture a step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No displays could be captured. Check Screen Recording permission.</source>
        <translation>No displays could be captured. Check that this session lets programs see the screen.</translation>
    </message>
    <message>
        <source>Tip: allow Accessibility in Settings so steps say what you clicked</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t capture — see Settings › Permissions &amp; Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>captured</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no room for the steps: the folder %1 can&apos;t be made.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another program is working on these steps.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folder %1 can&apos;t be written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only %1 of %2 steps were saved to the “%3” collection. %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Some captions stayed as they were. %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There was no room on disk for this guide when it began.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StepsUiTexts</name>
    <message>
        <source>Describe this step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unfinished Guides</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n guide(s) were not finished</source>
        <translation>
            <numerusform>%n guide was not finished</numerusform>
            <numerusform>%n guides were not finished</numerusform>
        </translation>
    </message>
    <message>
        <source>How-To Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, %2, %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n step(s)</source>
        <translation>
            <numerusform>%n step</numerusform>
            <numerusform>%n steps</numerusform>
        </translation>
    </message>
    <message>
        <source>Discard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Guide title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mark clicks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mark Clicks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Circle where you clicked and number each step. Edited steps keep their own markers.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide emails, numbers &amp; keys</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Auto-Redact</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pixelates sensitive text found in each step, on your Mac. Edited steps keep their own blurs.</source>
        <translation>Pixelates sensitive text found in each step, on your computer. Edited steps keep their own blurs.</translation>
    </message>
    <message>
        <source>Improve Captions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Claude rewrites each step as a clear instruction (uses your API key).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save as a PDF, a web page you can host, Markdown, or individual Library captures.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Web Page &amp;&amp; Markdown Folder…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Steps to Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Builds one tall guide image and opens it in the editor for final touches.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n step(s) deleted</source>
        <translation>
            <numerusform>%n step deleted</numerusform>
            <numerusform>%n steps deleted</numerusform>
        </translation>
    </message>
    <message>
        <source>Steps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit Step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change Caption</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Revert Edits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Delete %n Step(s)</source>
        <translation>
            <numerusform>Delete %n Step</numerusform>
            <numerusform>Delete %n Steps</numerusform>
        </translation>
    </message>
    <message>
        <source>Del</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Picture of the step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open this step in the full editor — arrows, text, blur, crop and more. Save or close to bring it back.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move this step earlier in the guide.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move this step later in the guide.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove this step from the guide.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Caption of step %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edited · Double-click to keep editing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Revert</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go back to the original screenshot with the automatic marker.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag the marker to move it · double-click to edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click the image to add a marker · double-click to edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Put the marker back where you actually clicked.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture the screen now without clicking — for hover menus and tooltips.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resume</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clicks aren&apos;t captured while paused.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop and review your guide.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop and discard these steps.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paused</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording steps · %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saving step…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No Steps Left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+Z brings the last ones back.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Web Page &amp; Markdown Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save as PDF</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF document (*.pdf)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Private text may be visible</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n step(s) couldn’t be searched for emails, numbers and keys, so nothing was exported.</source>
        <translation>
            <numerusform>%n step couldn’t be searched for emails, numbers and keys, so nothing was exported.</numerusform>
            <numerusform>%n steps couldn’t be searched for emails, numbers and keys, so nothing was exported.</numerusform>
        </translation>
    </message>
    <message>
        <source>Search again, hide by hand what is private in them (Edit), or delete them. They are selected in the list.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search Again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep this guide?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It has changes that were not exported. Lumenpost can keep it and offer it when it is started again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep for Later</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Discard this guide?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It has changes that were not exported, and it can’t be kept on disk. Export it before you close it.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UiTexts</name>
    <message>
        <source>Saturation and brightness</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hexadecimal color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>You can go on where you left off.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Discard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Later</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>saturation %1%, brightness %2%</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Context menu</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
