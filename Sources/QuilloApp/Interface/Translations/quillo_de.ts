<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>LibraryRows</name>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <translation>Gestern</translation>
    </message>
    <message>
        <source>dddd, d MMMM</source>
        <translation>dddd, d. MMMM</translation>
    </message>
    <message>
        <source>dddd, d MMMM yyyy</source>
        <translation>dddd, d. MMMM yyyy</translation>
    </message>
    <message>
        <source>Damaged capture</source>
        <translation>Beschädigte Aufnahme</translation>
    </message>
    <message>
        <source>complete</source>
        <translation>vollständig</translation>
    </message>
    <message>
        <source>partial</source>
        <translation>unvollständig</translation>
    </message>
    <message>
        <source>damaged</source>
        <translation>beschädigt</translation>
    </message>
</context>
<context>
    <name>QApplication</name>
    <message>
        <source>Turns the window in front of you into text and pixels for a language model.</source>
        <translation>Macht aus dem Fenster vor Ihnen Text und Bild für ein Sprachmodell.</translation>
    </message>
    <message>
        <source>The directory that holds the bundles.</source>
        <translation>Das Verzeichnis, in dem die Aufnahmen liegen.</translation>
    </message>
    <message>
        <source>Start without a window.</source>
        <translation>Ohne Fenster starten.</translation>
    </message>
    <message>
        <source>Do this: capture or paste.</source>
        <translation>Dies tun: capture oder paste.</translation>
    </message>
    <message>
        <source>there is no action &quot;%1&quot;</source>
        <translation>die Aktion „%1“ gibt es nicht</translation>
    </message>
    <message>
        <source>unexpected argument</source>
        <translation>unerwartetes Argument</translation>
    </message>
    <message>
        <source>There is no display. Start Quillo inside a desktop session.</source>
        <translation>Es gibt keine Anzeige. Starten Sie Quillo in einer Arbeitsumgebung.</translation>
    </message>
    <message>
        <source>The display %1 does not answer. Start Quillo inside a desktop session.</source>
        <translation>Die Anzeige %1 antwortet nicht. Starten Sie Quillo in einer Arbeitsumgebung.</translation>
    </message>
    <message>
        <source>Quillo is running already, but does not answer.</source>
        <translation>Quillo läuft bereits, antwortet aber nicht.</translation>
    </message>
</context>
<context>
    <name>quillo::ArtifactListModel</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>%1, %2, %3, %4</source>
        <translation>%1, %2, %3, %4</translation>
    </message>
</context>
<context>
    <name>quillo::Coverage</name>
    <message numerus="yes">
        <source>%1 elements</source>
        <translation>
            <numerusform>%1 Element</numerusform>
            <numerusform>%1 Elemente</numerusform>
        </translation>
    </message>
    <message>
        <source>Some text</source>
        <translation>Etwas Text</translation>
    </message>
    <message>
        <source>Some elements</source>
        <translation>Einige Elemente</translation>
    </message>
    <message numerus="yes">
        <source>%1 characters</source>
        <translation>
            <numerusform>%1 Zeichen</numerusform>
            <numerusform>%1 Zeichen</numerusform>
        </translation>
    </message>
    <message>
        <source>At least %1</source>
        <translation>Mindestens %1</translation>
    </message>
    <message numerus="yes">
        <source>in %1 places</source>
        <translation>
            <numerusform>an %1 Stelle</numerusform>
            <numerusform>an %1 Stellen</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 left out: the window has more elements than a capture reads.</source>
        <translation>%1 ausgelassen: Das Fenster hat mehr Elemente, als eine Aufnahme liest.</translation>
    </message>
    <message>
        <source>%1 left out %2: nested deeper than a capture reads.</source>
        <translation>%1 ausgelassen, %2: tiefer verschachtelt, als eine Aufnahme liest.</translation>
    </message>
    <message>
        <source>%1 left out %2: the window has more text than a capture keeps.</source>
        <translation>%1 ausgelassen, %2: Das Fenster hat mehr Text, als eine Aufnahme behält.</translation>
    </message>
    <message>
        <source>%1 left out %2: a single text was longer than a capture keeps.</source>
        <translation>%1 ausgelassen, %2: Ein einzelner Text war länger, als eine Aufnahme ihn behält.</translation>
    </message>
    <message numerus="yes">
        <source>%1 more notes.</source>
        <translation>
            <numerusform>%1 weiterer Hinweis.</numerusform>
            <numerusform>%1 weitere Hinweise.</numerusform>
        </translation>
    </message>
    <message>
        <source>Note: %1</source>
        <translation>Hinweis: %1</translation>
    </message>
    <message numerus="yes">
        <source>%1 (%2 times)</source>
        <translation>
            <numerusform>%1 (%2-mal)</numerusform>
            <numerusform>%1 (%2-mal)</numerusform>
        </translation>
    </message>
    <message>
        <source>Partly read: %1</source>
        <translation>Teilweise gelesen: %1</translation>
    </message>
    <message>
        <source>Read without reaching a limit: %1</source>
        <translation>Ohne Beschränkung gelesen: %1</translation>
    </message>
    <message numerus="yes">
        <source>, %1 protected</source>
        <translation>
            <numerusform>, %1 geschützt</numerusform>
            <numerusform>, %1 geschützt</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 protected, such as passwords: no text of theirs was read.</source>
        <translation>%1 geschützt, etwa Passwörter: Ihr Text wurde nicht gelesen.</translation>
    </message>
    <message>
        <source>%1 left out on purpose: decorative or empty.</source>
        <translation>%1 mit Absicht ausgelassen: schmückend oder leer.</translation>
    </message>
</context>
<context>
    <name>quillo::CoverageBanner</name>
    <message>
        <source>&amp;Details</source>
        <translation>&amp;Details</translation>
    </message>
    <message>
        <source>Details of what was read</source>
        <translation>Einzelheiten zum Gelesenen</translation>
    </message>
    <message>
        <source>What was read and what was left out</source>
        <translation>Was gelesen und was ausgelassen wurde</translation>
    </message>
    <message>
        <source>Partial</source>
        <translation>Unvollständig</translation>
    </message>
    <message>
        <source>Complete</source>
        <translation>Vollständig</translation>
    </message>
</context>
<context>
    <name>quillo::FeedPane</name>
    <message>
        <source>&amp;Show All Captures</source>
        <translation>Alle Auf&amp;nahmen zeigen</translation>
    </message>
    <message>
        <source>Search captures</source>
        <translation>Aufnahmen durchsuchen</translation>
    </message>
    <message>
        <source>Searches titles, notes, applications and everything that was captured</source>
        <translation>Durchsucht Titel, Notizen, Anwendungen und alles, was aufgenommen wurde</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Suche leeren</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>Anwendung</translation>
    </message>
    <message>
        <source>Shows only the captures of one application</source>
        <translation>Zeigt nur die Aufnahmen einer Anwendung</translation>
    </message>
    <message>
        <source>Captures</source>
        <translation>Aufnahmen</translation>
    </message>
    <message>
        <source>All applications (%1)</source>
        <translation>Alle Anwendungen (%1)</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message numerus="yes">
        <source>%1 captures</source>
        <translation>
            <numerusform>%1 Aufnahme</numerusform>
            <numerusform>%1 Aufnahmen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %2 captures</source>
        <translation>
            <numerusform>%1 von %2 Aufnahme</numerusform>
            <numerusform>%1 von %2 Aufnahmen</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2 damaged</source>
        <translation>%1, %2 beschädigt</translation>
    </message>
    <message>
        <source>%1, %2 selected</source>
        <translation>%1, %2 ausgewählt</translation>
    </message>
    <message>
        <source>%1, searching captured text…</source>
        <translation>%1, Text wird durchsucht&#xa0;…</translation>
    </message>
    <message>
        <source>Searching captured text…</source>
        <translation>Aufgenommener Text wird durchsucht&#xa0;…</translation>
    </message>
    <message>
        <source>No captures of this application.</source>
        <translation>Keine Aufnahmen dieser Anwendung.</translation>
    </message>
    <message>
        <source>Nothing matches “%1”.</source>
        <translation>Nichts passt zu „%1“.</translation>
    </message>
</context>
<context>
    <name>quillo::GuidePane</name>
    <message>
        <source>&amp;Skip for Now</source>
        <translation>Ü&amp;berspringen</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>Access</source>
        <translation>Zugriff</translation>
    </message>
    <message>
        <source>Let Quillo read windows</source>
        <translation>Quillo Fenster lesen lassen</translation>
    </message>
    <message>
        <source>Quillo captures the window in front of you, its pixels and its text, and pastes them where a language model reads. Everything stays on this machine until you paste it.</source>
        <translation>Quillo nimmt das Fenster vor Ihnen auf, sein Bild und seinen Text, und fügt beides dort ein, wo ein Sprachmodell liest. Alles bleibt auf diesem Rechner, bis Sie es einfügen.</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Kurzbefehle</translation>
    </message>
    <message>
        <source>Two shortcuts are all you need</source>
        <translation>Zwei Kurzbefehle genügen</translation>
    </message>
    <message>
        <source>They work in every application. Keep them, or choose your own.</source>
        <translation>Sie gelten in jeder Anwendung. Behalten Sie sie, oder wählen Sie eigene.</translation>
    </message>
    <message>
        <source>Capture</source>
        <translation>Aufnehmen</translation>
    </message>
    <message>
        <source>Capture a window</source>
        <translation>Ein Fenster aufnehmen</translation>
    </message>
    <message>
        <source>Open the practice window and press the capture shortcut while it is in front.</source>
        <translation>Öffnen Sie das Übungsfenster, und drücken Sie den Kurzbefehl zum Aufnehmen, während es vorn ist.</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Paste the capture</source>
        <translation>Die Aufnahme einfügen</translation>
    </message>
    <message>
        <source>Click into the practice window&apos;s lower field and press the paste shortcut. Your clipboard is as it was afterwards.</source>
        <translation>Klicken Sie in das untere Feld des Übungsfensters, und drücken Sie den Kurzbefehl zum Einfügen. Ihre Zwischenablage ist danach, wie sie war.</translation>
    </message>
    <message>
        <source>Open &amp;Practice Window</source>
        <translation>Übungsfenster ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Quillo may read windows.</source>
        <translation>Quillo darf Fenster lesen.</translation>
    </message>
    <message>
        <source>Waiting for access…</source>
        <translation>Der Zugriff fehlt noch&#xa0;…</translation>
    </message>
    <message>
        <source>Both shortcuts are ready.</source>
        <translation>Beide Kurzbefehle sind bereit.</translation>
    </message>
    <message>
        <source>The shortcuts are not ready yet.</source>
        <translation>Die Kurzbefehle sind noch nicht bereit.</translation>
    </message>
    <message>
        <source>Captured: %1</source>
        <translation>Aufgenommen: %1</translation>
    </message>
    <message numerus="yes">
        <source>Pasted: %L1 characters have arrived.</source>
        <translation>
            <numerusform>Eingefügt: %L1 Zeichen ist angekommen.</numerusform>
            <numerusform>Eingefügt: %L1 Zeichen sind angekommen.</numerusform>
        </translation>
    </message>
    <message>
        <source>Waiting for you to press %1…</source>
        <translation>Drücken Sie jetzt %1&#xa0;…</translation>
    </message>
    <message>
        <source>The practice window is not open.</source>
        <translation>Das Übungsfenster ist nicht geöffnet.</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Erledigt</translation>
    </message>
    <message>
        <source>Step %L1</source>
        <translation>Schritt %L1</translation>
    </message>
    <message>
        <source>Step %1 of %2: %3</source>
        <translation>Schritt %1 von %2: %3</translation>
    </message>
    <message>
        <source>done</source>
        <translation>erledigt</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>Steht noch aus</translation>
    </message>
    <message>
        <source>&amp;Finish</source>
        <translation>Ab&amp;schließen</translation>
    </message>
    <message>
        <source>&amp;Continue</source>
        <translation>&amp;Weiter</translation>
    </message>
</context>
<context>
    <name>quillo::HeadsUpPanel</name>
    <message>
        <source>Quillo</source>
        <translation>Quillo</translation>
    </message>
    <message>
        <source>%1. %2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>Reading window and interface…</source>
        <translation>Fenster und Oberfläche werden gelesen&#xa0;…</translation>
    </message>
</context>
<context>
    <name>quillo::InspectorPane</name>
    <message>
        <source>What was captured</source>
        <translation>Was aufgenommen wurde</translation>
    </message>
    <message>
        <source>Captured &amp;window</source>
        <translation>Aufgenommenes &amp;Fenster</translation>
    </message>
    <message>
        <source>What is &amp;pasted</source>
        <translation>Was &amp;eingefügt wird</translation>
    </message>
    <message>
        <source>Whether changes are saved</source>
        <translation>Ob Änderungen gesichert sind</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>Ko&amp;pieren</translation>
    </message>
    <message>
        <source>Show &amp;Files</source>
        <translation>Dateien &amp;zeigen</translation>
    </message>
    <message>
        <source>Move to &amp;Trash</source>
        <translation>In den Papierk&amp;orb</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Intent and corrections</source>
        <translation>Absicht und Korrekturen</translation>
    </message>
    <message>
        <source>What is this capture for? What did Quillo get wrong?</source>
        <translation>Wofür ist diese Aufnahme? Was hat Quillo falsch gelesen?</translation>
    </message>
    <message>
        <source>T&amp;itle</source>
        <translation>T&amp;itel</translation>
    </message>
    <message>
        <source>Intent and c&amp;orrections</source>
        <translation>Absicht und &amp;Korrekturen</translation>
    </message>
    <message>
        <source>Paste preview</source>
        <translation>Vorschau des Eingefügten</translation>
    </message>
    <message>
        <source>Nothing of the window&apos;s text was captured.</source>
        <translation>Vom Text des Fensters wurde nichts aufgenommen.</translation>
    </message>
    <message>
        <source>The screenshot cannot be read.</source>
        <translation>Das Bildschirmfoto ist nicht lesbar.</translation>
    </message>
    <message>
        <source>%1  ·  %2</source>
        <translation>%1  ·  %2</translation>
    </message>
    <message>
        <source>Reading the captured context…</source>
        <translation>Der aufgenommene Inhalt wird gelesen&#xa0;…</translation>
    </message>
    <message>
        <source>Reading the screenshot…</source>
        <translation>Das Bildschirmfoto wird gelesen&#xa0;…</translation>
    </message>
    <message>
        <source>Saving…</source>
        <translation>Wird gesichert&#xa0;…</translation>
    </message>
    <message>
        <source>Not saved: %1 What you wrote is kept here.</source>
        <translation>Nicht gesichert: %1 Was Sie geschrieben haben, bleibt hier stehen.</translation>
    </message>
    <message>
        <source>Not saved yet</source>
        <translation>Noch nicht gesichert</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Gesichert</translation>
    </message>
</context>
<context>
    <name>quillo::Ledger</name>
    <message>
        <source>application</source>
        <translation>Anwendung</translation>
    </message>
    <message>
        <source>window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <source>sheet</source>
        <translation>Blatt</translation>
    </message>
    <message>
        <source>section</source>
        <translation>Abschnitt</translation>
    </message>
    <message>
        <source>group</source>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>navigation</source>
        <translation>Navigation</translation>
    </message>
    <message>
        <source>toolbar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>tab group</source>
        <translation>Reitergruppe</translation>
    </message>
    <message>
        <source>tab</source>
        <translation>Reiter</translation>
    </message>
    <message>
        <source>document</source>
        <translation>Dokument</translation>
    </message>
    <message>
        <source>web content</source>
        <translation>Webinhalt</translation>
    </message>
    <message>
        <source>scroll area</source>
        <translation>Rollbereich</translation>
    </message>
    <message>
        <source>heading</source>
        <translation>Überschrift</translation>
    </message>
    <message>
        <source>text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>text field</source>
        <translation>Textfeld</translation>
    </message>
    <message>
        <source>text area</source>
        <translation>Textbereich</translation>
    </message>
    <message>
        <source>search field</source>
        <translation>Suchfeld</translation>
    </message>
    <message>
        <source>button</source>
        <translation>Knopf</translation>
    </message>
    <message>
        <source>disclosure</source>
        <translation>Aufklapper</translation>
    </message>
    <message>
        <source>link</source>
        <translation>Verweis</translation>
    </message>
    <message>
        <source>checkbox</source>
        <translation>Ankreuzfeld</translation>
    </message>
    <message>
        <source>radio button</source>
        <translation>Auswahlknopf</translation>
    </message>
    <message>
        <source>switch</source>
        <translation>Schalter</translation>
    </message>
    <message>
        <source>list</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>list item</source>
        <translation>Listeneintrag</translation>
    </message>
    <message>
        <source>table</source>
        <translation>Tabelle</translation>
    </message>
    <message>
        <source>row</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>column</source>
        <translation>Spalte</translation>
    </message>
    <message>
        <source>cell</source>
        <translation>Zelle</translation>
    </message>
    <message>
        <source>outline</source>
        <translation>Gliederung</translation>
    </message>
    <message>
        <source>outline row</source>
        <translation>Gliederungszeile</translation>
    </message>
    <message>
        <source>menu bar</source>
        <translation>Menüleiste</translation>
    </message>
    <message>
        <source>menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>menu item</source>
        <translation>Menüeintrag</translation>
    </message>
    <message>
        <source>combo box</source>
        <translation>Kombinationsfeld</translation>
    </message>
    <message>
        <source>pop-up button</source>
        <translation>Auswahlliste</translation>
    </message>
    <message>
        <source>slider</source>
        <translation>Schieberegler</translation>
    </message>
    <message>
        <source>stepper</source>
        <translation>Zahlenfeld</translation>
    </message>
    <message>
        <source>scroll bar</source>
        <translation>Bildlaufleiste</translation>
    </message>
    <message>
        <source>value indicator</source>
        <translation>Wertanzeige</translation>
    </message>
    <message>
        <source>image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>icon</source>
        <translation>Symbol</translation>
    </message>
    <message>
        <source>progress indicator</source>
        <translation>Fortschrittsanzeige</translation>
    </message>
    <message>
        <source>split group</source>
        <translation>Teilergruppe</translation>
    </message>
    <message>
        <source>browser</source>
        <translation>Spaltenansicht</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>protected, its text was not read</source>
        <translation>geschützt, Text nicht gelesen</translation>
    </message>
    <message>
        <source>hidden</source>
        <translation>verborgen</translation>
    </message>
    <message>
        <source>in a closed menu</source>
        <translation>in einem geschlossenen Menü</translation>
    </message>
    <message>
        <source>scrolled out of sight</source>
        <translation>aus dem Blick gerollt</translation>
    </message>
    <message>
        <source>focused</source>
        <translation>hat den Fokus</translation>
    </message>
    <message>
        <source>selected</source>
        <translation>ausgewählt</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>nicht verfügbar</translation>
    </message>
    <message>
        <source>expanded</source>
        <translation>aufgeklappt</translation>
    </message>
    <message>
        <source>collapsed</source>
        <translation>zugeklappt</translation>
    </message>
    <message>
        <source>checked</source>
        <translation>angekreuzt</translation>
    </message>
    <message>
        <source>not checked</source>
        <translation>nicht angekreuzt</translation>
    </message>
    <message>
        <source>partly checked</source>
        <translation>teilweise angekreuzt</translation>
    </message>
    <message>
        <source>required</source>
        <translation>Pflichtfeld</translation>
    </message>
    <message>
        <source>modal</source>
        <translation>modal</translation>
    </message>
    <message>
        <source>visited</source>
        <translation>besucht</translation>
    </message>
    <message>
        <source>busy</source>
        <translation>beschäftigt</translation>
    </message>
    <message>
        <source>invalid</source>
        <translation>ungültig</translation>
    </message>
    <message>
        <source>edited</source>
        <translation>geändert</translation>
    </message>
</context>
<context>
    <name>quillo::LedgerPane</name>
    <message>
        <source>Previous match</source>
        <translation>Vorheriger Treffer</translation>
    </message>
    <message>
        <source>Next match</source>
        <translation>Nächster Treffer</translation>
    </message>
    <message>
        <source>&amp;Ledger</source>
        <translation>&amp;Verzeichnis</translation>
    </message>
    <message>
        <source>Find in the ledger</source>
        <translation>Im Verzeichnis suchen</translation>
    </message>
    <message>
        <source>Ledger of the captured window</source>
        <translation>Verzeichnis des aufgenommenen Fensters</translation>
    </message>
    <message>
        <source>&amp;Copy Text</source>
        <translation>Text &amp;kopieren</translation>
    </message>
    <message>
        <source>Copy Line and All &amp;Below</source>
        <translation>Zeile mit allem &amp;darunter kopieren</translation>
    </message>
    <message>
        <source>&amp;Expand All</source>
        <translation>Alles &amp;aufklappen</translation>
    </message>
    <message>
        <source>C&amp;ollapse All</source>
        <translation>Alles &amp;zuklappen</translation>
    </message>
    <message>
        <source>No match</source>
        <translation>Kein Treffer</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message numerus="yes">
        <source>%1 matches</source>
        <translation>
            <numerusform>%1 Treffer</numerusform>
            <numerusform>%1 Treffer</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quillo::LibraryWindow</name>
    <message>
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>Loading artifacts…</source>
        <translation>Aufnahmen werden geladen&#xa0;…</translation>
    </message>
    <message>
        <source>Reading window and interface…</source>
        <translation>Fenster und Oberfläche werden gelesen&#xa0;…</translation>
    </message>
    <message>
        <source>Saving changes…</source>
        <translation>Änderungen werden gesichert&#xa0;…</translation>
    </message>
    <message>
        <source>Pasting capture…</source>
        <translation>Aufnahme wird eingefügt&#xa0;…</translation>
    </message>
    <message>
        <source>Move to &amp;Trash</source>
        <translation>In den Papierk&amp;orb</translation>
    </message>
    <message>
        <source>Quillo</source>
        <translation>Quillo</translation>
    </message>
    <message>
        <source>C&amp;apture</source>
        <translation>&amp;Aufnahme</translation>
    </message>
    <message>
        <source>&amp;Copy Selected Capture</source>
        <translation>Ausgewählte Aufnahme &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;Look at Screenshot</source>
        <translation>&amp;Bildschirmfoto ansehen</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Umbenennen</translation>
    </message>
    <message>
        <source>Show &amp;Files</source>
        <translation>&amp;Dateien zeigen</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>Select &amp;All Captures</source>
        <translation>Alle Aufnahmen aus&amp;wählen</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>&amp;Show All Captures</source>
        <translation>Alle Auf&amp;nahmen zeigen</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>An&amp;sicht</translation>
    </message>
    <message>
        <source>&amp;List of Captures</source>
        <translation>&amp;Liste der Aufnahmen</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>&amp;Neu laden</translation>
    </message>
    <message>
        <source>&amp;Quillo</source>
        <translation>&amp;Quillo</translation>
    </message>
    <message>
        <source>&amp;Setup &amp;&amp; Shortcuts…</source>
        <translation>&amp;Einrichtung und Kurzbefehle&#xa0;…</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>&amp;Quit Quillo</source>
        <translation>Quillo &amp;beenden</translation>
    </message>
    <message>
        <source>&amp;Undo Moving %1 Captures to Trash</source>
        <translation>%1 Aufnahmen zu&amp;rück aus dem Papierkorb</translation>
    </message>
    <message>
        <source>&amp;Undo Move to Trash</source>
        <translation>Zu&amp;rück aus dem Papierkorb</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>The library cannot be read</source>
        <translation>Die Bibliothek ist nicht lesbar</translation>
    </message>
    <message>
        <source>This capture cannot be opened</source>
        <translation>Diese Aufnahme lässt sich nicht öffnen</translation>
    </message>
    <message>
        <source>No captures yet</source>
        <translation>Noch keine Aufnahmen</translation>
    </message>
    <message>
        <source>Bring a window to the front and press %1. Its pixels and its text appear here.</source>
        <translation>Holen Sie ein Fenster nach vorn, und drücken Sie %1. Sein Bild und sein Text erscheinen hier.</translation>
    </message>
    <message>
        <source>Nothing selected</source>
        <translation>Nichts ausgewählt</translation>
    </message>
    <message>
        <source>Choose a capture to read, correct, copy or paste it.</source>
        <translation>Wählen Sie eine Aufnahme, um sie zu lesen, zu berichtigen, zu kopieren oder einzufügen.</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Erledigt</translation>
    </message>
    <message>
        <source>In progress</source>
        <translation>Im Gange</translation>
    </message>
</context>
<context>
    <name>quillo::Message</name>
    <message>
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>Loading artifacts…</source>
        <translation>Aufnahmen werden geladen&#xa0;…</translation>
    </message>
    <message>
        <source>Reading window and interface…</source>
        <translation>Fenster und Oberfläche werden gelesen&#xa0;…</translation>
    </message>
    <message>
        <source>Saving changes…</source>
        <translation>Änderungen werden gesichert&#xa0;…</translation>
    </message>
    <message>
        <source>Pasting capture…</source>
        <translation>Aufnahme wird eingefügt&#xa0;…</translation>
    </message>
    <message>
        <source>Capture saved to the library</source>
        <translation>Aufnahme in der Bibliothek gesichert</translation>
    </message>
    <message>
        <source>Open the Quillo menu from the window you want to capture, then choose Capture</source>
        <translation>Öffnen Sie das Menü von Quillo aus dem Fenster, das Sie aufnehmen möchten, und wählen Sie dann „Aufnehmen“</translation>
    </message>
    <message>
        <source>Quillo could not identify the artifact whose changes need saving</source>
        <translation>Quillo konnte nicht feststellen, zu welcher Aufnahme die Änderungen gehören</translation>
    </message>
    <message>
        <source>Quillo could not finish saving edits before quitting. Try again.</source>
        <translation>Quillo konnte die Änderungen vor dem Beenden nicht fertig sichern. Versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Quillo could not change whether it starts at login: %1</source>
        <translation>Quillo konnte den Start beim Anmelden nicht ändern: %1</translation>
    </message>
    <message>
        <source>Keyboard shortcuts updated</source>
        <translation>Kurzbefehle geändert</translation>
    </message>
    <message>
        <source>Keyboard shortcuts updated, but not kept: %1</source>
        <translation>Kurzbefehle geändert, aber nicht gemerkt: %1</translation>
    </message>
    <message>
        <source>Keyboard shortcuts ready</source>
        <translation>Kurzbefehle bereit</translation>
    </message>
    <message>
        <source>Select a capture in the library first</source>
        <translation>Wählen Sie zuerst eine Aufnahme in der Bibliothek</translation>
    </message>
    <message>
        <source>Screenshot, interface map, and note copied</source>
        <translation>Bildschirmfoto, Oberfläche und Notiz kopiert</translation>
    </message>
    <message>
        <source>The selected artifact changed before it could be moved</source>
        <translation>Die Auswahl hat sich geändert, bevor die Aufnahme verschoben werden konnte</translation>
    </message>
    <message>
        <source>Artifact moved to Trash</source>
        <translation>Aufnahme in den Papierkorb verschoben</translation>
    </message>
    <message numerus="yes">
        <source>%n artifacts moved to Trash</source>
        <translation>
            <numerusform>%n Aufnahme in den Papierkorb verschoben</numerusform>
            <numerusform>%n Aufnahmen in den Papierkorb verschoben</numerusform>
        </translation>
    </message>
    <message>
        <source>Moved %1 to Trash; %2 could not be moved</source>
        <translation>%1 in den Papierkorb verschoben; %2 ließen sich nicht verschieben</translation>
    </message>
    <message>
        <source>Artifact put back from Trash</source>
        <translation>Aufnahme aus dem Papierkorb zurückgelegt</translation>
    </message>
    <message numerus="yes">
        <source>%n artifacts put back from Trash</source>
        <translation>
            <numerusform>%n Aufnahme aus dem Papierkorb zurückgelegt</numerusform>
            <numerusform>%n Aufnahmen aus dem Papierkorb zurückgelegt</numerusform>
        </translation>
    </message>
    <message>
        <source>Put back %1 from Trash; %2 could not be put back: %3</source>
        <translation>%1 aus dem Papierkorb zurückgelegt; %2 ließen sich nicht zurücklegen: %3</translation>
    </message>
    <message>
        <source>Quillo %1 is available</source>
        <translation>Quillo %1 ist verfügbar</translation>
    </message>
    <message>
        <source>Quillo is up to date</source>
        <translation>Quillo ist auf dem neuesten Stand</translation>
    </message>
    <message>
        <source>Quillo %1 is downloaded</source>
        <translation>Quillo %1 ist heruntergeladen</translation>
    </message>
    <message>
        <source>Quillo %1 is installed; it is used from the next start on</source>
        <translation>Quillo %1 ist installiert und wird ab dem nächsten Start benutzt</translation>
    </message>
    <message>
        <source>1 element, complete</source>
        <translation>1 Element, vollständig</translation>
    </message>
    <message numerus="yes">
        <source>%n elements, complete</source>
        <translation>
            <numerusform>%n Element, vollständig</numerusform>
            <numerusform>%n Elemente, vollständig</numerusform>
        </translation>
    </message>
    <message>
        <source>1 element, partial: %1</source>
        <translation>1 Element, unvollständig: %1</translation>
    </message>
    <message numerus="yes">
        <source>%n elements, partial: %1</source>
        <translation>
            <numerusform>%n Element, unvollständig: %1</numerusform>
            <numerusform>%n Elemente, unvollständig: %1</numerusform>
        </translation>
    </message>
    <message>
        <source>element limit reached</source>
        <translation>Höchstzahl der Elemente erreicht</translation>
    </message>
    <message>
        <source>depth limit reached</source>
        <translation>größte Tiefe erreicht</translation>
    </message>
    <message>
        <source>text limit reached</source>
        <translation>größte Textmenge erreicht</translation>
    </message>
    <message>
        <source>long texts shortened</source>
        <translation>lange Texte gekürzt</translation>
    </message>
    <message>
        <source>1 reading problem</source>
        <translation>1 Problem beim Lesen</translation>
    </message>
    <message numerus="yes">
        <source>%n reading problems</source>
        <translation>
            <numerusform>%n Problem beim Lesen</numerusform>
            <numerusform>%n Probleme beim Lesen</numerusform>
        </translation>
    </message>
    <message>
        <source>cut short</source>
        <translation>gekürzt</translation>
    </message>
    <message>
        <source>Capture Frontmost Window  %1</source>
        <translation>Vorderstes Fenster aufnehmen  %1</translation>
    </message>
    <message>
        <source>Paste Selected Capture  %1</source>
        <translation>Ausgewählte Aufnahme einfügen  %1</translation>
    </message>
    <message>
        <source>Recheck Capture Access</source>
        <translation>Zugriff erneut prüfen</translation>
    </message>
    <message>
        <source>Selected: %1</source>
        <translation>Ausgewählt: %1</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Aktualisierungen suchen&#xa0;…</translation>
    </message>
    <message>
        <source>Open Library</source>
        <translation>Bibliothek öffnen</translation>
    </message>
    <message>
        <source>Setup &amp; Shortcuts…</source>
        <translation>Einrichtung und Kurzbefehle&#xa0;…</translation>
    </message>
    <message>
        <source>Finish Setup…</source>
        <translation>Einrichtung abschließen&#xa0;…</translation>
    </message>
    <message>
        <source>Quit Quillo</source>
        <translation>Quillo beenden</translation>
    </message>
    <message>
        <source>Quillo — capture the frontmost window with context</source>
        <translation>Quillo – das vorderste Fenster mit Inhalt aufnehmen</translation>
    </message>
    <message>
        <source>Open capture controls and recent artifact actions</source>
        <translation>Aufnehmen und Aktionen für Aufnahmen öffnen</translation>
    </message>
    <message>
        <source>Open %1 Settings</source>
        <translation>Einstellungen für %1 öffnen</translation>
    </message>
    <message>
        <source>%1: Allowed</source>
        <translation>%1: Erlaubt</translation>
    </message>
    <message>
        <source>Screen Recording</source>
        <translation>Bildschirmaufnahme</translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>Bedienungshilfen</translation>
    </message>
    <message>
        <source>Screenshot, interface map, and note pasted</source>
        <translation>Bildschirmfoto, Oberfläche und Notiz eingefügt</translation>
    </message>
    <message>
        <source>Capture pasted, but Quillo could not restore the previous clipboard</source>
        <translation>Aufnahme eingefügt, aber Quillo konnte die vorige Zwischenablage nicht wiederherstellen</translation>
    </message>
    <message>
        <source>Paste stopped, and Quillo could not restore the previous clipboard</source>
        <translation>Einfügen abgebrochen, und Quillo konnte die vorige Zwischenablage nicht wiederherstellen</translation>
    </message>
    <message>
        <source>Another Quillo paste is still in progress</source>
        <translation>Quillo fügt gerade noch etwas anderes ein</translation>
    </message>
    <message>
        <source>Quillo needs Accessibility access to paste here</source>
        <translation>Quillo braucht Zugriff auf die Bedienungshilfen, um hier einzufügen</translation>
    </message>
    <message>
        <source>The destination changed before Quillo could start pasting</source>
        <translation>Das Ziel hat sich geändert, bevor Quillo mit dem Einfügen beginnen konnte</translation>
    </message>
    <message>
        <source>The destination changed before Quillo could finish pasting</source>
        <translation>Das Ziel hat sich geändert, bevor Quillo mit dem Einfügen fertig war</translation>
    </message>
    <message>
        <source>The destination did not accept the capture</source>
        <translation>Das Ziel hat die Aufnahme nicht angenommen</translation>
    </message>
    <message>
        <source>Release the shortcut keys, then try pasting again</source>
        <translation>Lassen Sie die Tasten los, und fügen Sie dann erneut ein</translation>
    </message>
    <message>
        <source>The clipboard changed before Quillo could finish pasting</source>
        <translation>Die Zwischenablage hat sich geändert, bevor Quillo mit dem Einfügen fertig war</translation>
    </message>
    <message>
        <source>The clipboard rejected this artifact</source>
        <translation>Die Zwischenablage hat diese Aufnahme abgelehnt</translation>
    </message>
    <message>
        <source>The clipboard rejected part of this capture</source>
        <translation>Die Zwischenablage hat einen Teil dieser Aufnahme abgelehnt</translation>
    </message>
    <message>
        <source>The current clipboard cannot be preserved losslessly</source>
        <translation>Die jetzige Zwischenablage lässt sich nicht verlustfrei bewahren</translation>
    </message>
    <message>
        <source>Open the Quillo menu from an editable destination, then choose Paste</source>
        <translation>Öffnen Sie das Menü von Quillo aus einem Feld, in das man schreiben kann, und wählen Sie dann „Einfügen“</translation>
    </message>
    <message>
        <source>Quillo cannot reach the display, so it cannot use the clipboard.</source>
        <translation>Quillo erreicht die Anzeige nicht und kann die Zwischenablage daher nicht benutzen.</translation>
    </message>
    <message>
        <source>The display went away while Quillo used the clipboard.</source>
        <translation>Die Anzeige verschwand, während Quillo die Zwischenablage benutzte.</translation>
    </message>
    <message>
        <source>The display does not offer the %1 extension, which Quillo needs for the clipboard.</source>
        <translation>Der Anzeige fehlt die Erweiterung %1, die Quillo für die Zwischenablage braucht.</translation>
    </message>
    <message>
        <source>Run Quillo inside a desktop session, where DISPLAY names the display.</source>
        <translation>Starten Sie Quillo in einer Arbeitsumgebung, in der DISPLAY die Anzeige nennt.</translation>
    </message>
    <message>
        <source>Click a shortcut, then type the combination you want.</source>
        <translation>Klicken Sie auf einen Kurzbefehl, und drücken Sie dann die gewünschten Tasten.</translation>
    </message>
    <message>
        <source>Hold Control, Option, or Command and press another key.</source>
        <translation>Halten Sie Strg, Alt oder Super, und drücken Sie eine weitere Taste.</translation>
    </message>
    <message>
        <source>Include at least two of Control, Option, and Command with a key.</source>
        <translation>Nehmen Sie mindestens zwei von Strg, Alt und Super und dazu eine Taste.</translation>
    </message>
    <message>
        <source>Capture and paste need different shortcuts.</source>
        <translation>Aufnehmen und Einfügen brauchen verschiedene Kurzbefehle.</translation>
    </message>
    <message>
        <source>Quillo could not install its keyboard handler (OSStatus %1).</source>
        <translation>Quillo konnte seine Tastatursteuerung nicht einrichten (OSStatus %1).</translation>
    </message>
    <message>
        <source>Quillo could not reserve the capture shortcut (OSStatus %1).</source>
        <translation>Quillo konnte den Kurzbefehl zum Aufnehmen nicht belegen (OSStatus %1).</translation>
    </message>
    <message>
        <source>Quillo could not reserve the paste shortcut (OSStatus %1).</source>
        <translation>Quillo konnte den Kurzbefehl zum Einfügen nicht belegen (OSStatus %1).</translation>
    </message>
    <message>
        <source>Quillo&apos;s keyboard shortcuts are already registered.</source>
        <translation>Die Kurzbefehle von Quillo sind schon belegt.</translation>
    </message>
    <message>
        <source>Another program uses this shortcut. Choose a different one, or free it there.</source>
        <translation>Ein anderes Programm benutzt diesen Kurzbefehl. Wählen Sie einen anderen, oder geben Sie ihn dort frei.</translation>
    </message>
    <message>
        <source>The keyboard has no such key. Choose a different shortcut.</source>
        <translation>Die Tastatur hat diese Taste nicht. Wählen Sie einen anderen Kurzbefehl.</translation>
    </message>
    <message>
        <source>Quillo needs Screen Recording permission before it can capture another app.</source>
        <translation>Quillo braucht die Erlaubnis zur Bildschirmaufnahme, bevor es eine andere Anwendung aufnehmen kann.</translation>
    </message>
    <message>
        <source>Quillo needs %1 permission before capturing.</source>
        <translation>Quillo braucht vor dem Aufnehmen die Erlaubnis: %1.</translation>
    </message>
    <message>
        <source>Quillo needs Accessibility access in System Settings to capture application context.</source>
        <translation>Quillo braucht in den Systemeinstellungen Zugriff auf die Bedienungshilfen, um den Inhalt von Anwendungen aufzunehmen.</translation>
    </message>
    <message>
        <source>Enable Quillo in System Settings &gt; Privacy &amp; Security &gt; Accessibility.</source>
        <translation>Erlauben Sie Quillo in den Systemeinstellungen unter Datenschutz &amp; Sicherheit &gt; Bedienungshilfen.</translation>
    </message>
    <message>
        <source>Enable Quillo in System Settings &gt; Privacy &amp; Security &gt; Screen &amp; System Audio Recording, then relaunch Quillo.</source>
        <translation>Erlauben Sie Quillo in den Systemeinstellungen unter Datenschutz &amp; Sicherheit &gt; Bildschirm- &amp; Systemtonaufnahme, und starten Sie Quillo dann neu.</translation>
    </message>
    <message>
        <source>Enable Quillo in Screen &amp; System Audio Recording and Accessibility under System Settings &gt; Privacy &amp; Security, then relaunch Quillo.</source>
        <translation>Erlauben Sie Quillo in den Systemeinstellungen unter Datenschutz &amp; Sicherheit die Bildschirm- &amp; Systemtonaufnahme und die Bedienungshilfen, und starten Sie Quillo dann neu.</translation>
    </message>
    <message>
        <source>Bring the window you want to capture to the front and try the capture shortcut again.</source>
        <translation>Holen Sie das gewünschte Fenster nach vorn, und drücken Sie den Kurzbefehl zum Aufnehmen erneut.</translation>
    </message>
    <message>
        <source>Quillo could not find a frontmost application window to capture.</source>
        <translation>Quillo hat kein vorderstes Fenster einer Anwendung zum Aufnehmen gefunden.</translation>
    </message>
    <message>
        <source>The frozen capture target has an invalid process identifier (%1).</source>
        <translation>Das festgehaltene Ziel hat eine ungültige Prozessnummer (%1).</translation>
    </message>
    <message>
        <source>The frozen capture target has an invalid window identifier (%1).</source>
        <translation>Das festgehaltene Ziel hat eine ungültige Fensternummer (%1).</translation>
    </message>
    <message>
        <source>The capture target has an invalid process identifier (%1).</source>
        <translation>Das Ziel hat eine ungültige Prozessnummer (%1).</translation>
    </message>
    <message>
        <source>The capture target has an invalid window identifier (%1).</source>
        <translation>Das Ziel hat eine ungültige Fensternummer (%1).</translation>
    </message>
    <message>
        <source>Window capture returned window %1 from PID %2, not frozen window %3 from PID %4.</source>
        <translation>Aufgenommen wurde Fenster %1 von PID %2, nicht das festgehaltene Fenster %3 von PID %4.</translation>
    </message>
    <message>
        <source>Window capture failed: %1</source>
        <translation>Das Bild des Fensters ist nicht gelungen: %1</translation>
    </message>
    <message>
        <source>Accessibility capture failed: %1</source>
        <translation>Das Lesen des Fensters ist nicht gelungen: %1</translation>
    </message>
    <message>
        <source>Window capture exceeded its %1-second safety deadline.</source>
        <translation>Das Bild des Fensters kam nicht innerhalb der Frist von %1 Sekunden.</translation>
    </message>
    <message>
        <source>Accessibility capture exceeded its %1-second safety deadline.</source>
        <translation>Das Lesen des Fensters endete nicht innerhalb der Frist von %1 Sekunden.</translation>
    </message>
    <message>
        <source>The operation exceeded its %1-second safety deadline.</source>
        <translation>Der Vorgang endete nicht innerhalb der Frist von %1 Sekunden.</translation>
    </message>
    <message>
        <source>ScreenCaptureKit could not enumerate captureable windows: %1</source>
        <translation>ScreenCaptureKit konnte die Fenster nicht auflisten: %1</translation>
    </message>
    <message>
        <source>ScreenCaptureKit did not enumerate captureable windows within %1 seconds.</source>
        <translation>ScreenCaptureKit hat die Fenster nicht innerhalb von %1 Sekunden aufgelistet.</translation>
    </message>
    <message>
        <source>No visible captureable window was found for %1 (PID %2).</source>
        <translation>Für %1 (PID %2) wurde kein sichtbares Fenster gefunden, das sich aufnehmen lässt.</translation>
    </message>
    <message>
        <source>No visible captureable window was found for PID %1.</source>
        <translation>Für PID %1 wurde kein sichtbares Fenster gefunden, das sich aufnehmen lässt.</translation>
    </message>
    <message>
        <source>The frozen window %1 for %2 is no longer available to ScreenCaptureKit.</source>
        <translation>Das festgehaltene Fenster %1 von %2 ist für ScreenCaptureKit nicht mehr da.</translation>
    </message>
    <message>
        <source>ScreenCaptureKit could not capture window %1: %2</source>
        <translation>ScreenCaptureKit konnte Fenster %1 nicht aufnehmen: %2</translation>
    </message>
    <message>
        <source>ScreenCaptureKit did not capture window %1 within %2 seconds.</source>
        <translation>ScreenCaptureKit hat Fenster %1 nicht innerhalb von %2 Sekunden aufgenommen.</translation>
    </message>
    <message>
        <source>ScreenCaptureKit returned no image for window %1.</source>
        <translation>ScreenCaptureKit gab kein Bild für Fenster %1 zurück.</translation>
    </message>
    <message>
        <source>The macOS window server did not return a list of visible windows.</source>
        <translation>Der macOS-Fensterserver gab keine Liste der sichtbaren Fenster zurück.</translation>
    </message>
    <message>
        <source>Quillo could not create a PNG image destination.</source>
        <translation>Quillo konnte kein PNG-Bild anlegen.</translation>
    </message>
    <message>
        <source>Quillo could not encode the captured window as PNG.</source>
        <translation>Quillo konnte das aufgenommene Fenster nicht als PNG schreiben.</translation>
    </message>
    <message>
        <source>The display keeps the window&apos;s pixels in a format that is not supported.</source>
        <translation>Die Anzeige hält die Bildpunkte des Fensters in einem Format, das nicht unterstützt wird.</translation>
    </message>
    <message>
        <source>The window is no longer on the screen.</source>
        <translation>Das Fenster ist nicht mehr auf dem Bildschirm.</translation>
    </message>
    <message>
        <source>The window is too large for a picture.</source>
        <translation>Das Fenster ist zu groß für ein Bild.</translation>
    </message>
    <message>
        <source>The display does not give the window&apos;s pixels.</source>
        <translation>Die Anzeige gibt die Bildpunkte des Fensters nicht heraus.</translation>
    </message>
    <message>
        <source>The application does not draw the part of its window that is covered.</source>
        <translation>Die Anwendung zeichnet den verdeckten Teil ihres Fensters nicht.</translation>
    </message>
    <message>
        <source>%1 is not a valid target process identifier.</source>
        <translation>%1 ist keine gültige Prozessnummer.</translation>
    </message>
    <message>
        <source>The Accessibility API could not connect to process %1.</source>
        <translation>Die Bedienungshilfen erreichen den Prozess %1 nicht.</translation>
    </message>
    <message>
        <source>Accessibility could not resolve frozen window %1 in PID %2: %3</source>
        <translation>Die Bedienungshilfen konnten das festgehaltene Fenster %1 in PID %2 nicht zuordnen: %3</translation>
    </message>
    <message>
        <source>The application exposed no Accessibility windows.</source>
        <translation>Die Anwendung macht den Bedienungshilfen keine Fenster bekannt.</translation>
    </message>
    <message>
        <source>No unnumbered Accessibility window matched the frozen frame or uniquely matched its dimensions and title across coordinate spaces.</source>
        <translation>Kein Fenster der Bedienungshilfen stimmt in Lage oder eindeutig in Größe und Titel mit dem festgehaltenen überein.</translation>
    </message>
    <message>
        <source>An artifact with ID %1 already exists.</source>
        <translation>Eine Aufnahme mit der Kennung %1 gibt es schon.</translation>
    </message>
    <message>
        <source>No artifact exists with ID %1.</source>
        <translation>Eine Aufnahme mit der Kennung %1 gibt es nicht.</translation>
    </message>
    <message>
        <source>Artifact %1 has an invalid or unsafe bundle layout.</source>
        <translation>Der Ordner der Aufnahme %1 ist ungültig oder unsicher aufgebaut.</translation>
    </message>
    <message>
        <source>Artifact %1 references neither canonical nor legacy Accessibility evidence.</source>
        <translation>Die Aufnahme %1 nennt weder neue noch alte Daten der Bedienungshilfen.</translation>
    </message>
    <message>
        <source>Artifact schema version %1 is not supported.</source>
        <translation>Die Version %1 der Aufnahme wird nicht unterstützt.</translation>
    </message>
    <message>
        <source>Artifact %1 could not be moved to the Trash: %2</source>
        <translation>Die Aufnahme %1 ließ sich nicht in den Papierkorb verschieben: %2</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is damaged: %2</source>
        <translation>Die Datei „%1“ ist beschädigt: %2</translation>
    </message>
    <message>
        <source>Could not read &quot;%1&quot;: it is not a regular file</source>
        <translation>„%1“ ist nicht lesbar: Es ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>Could not open &quot;%1&quot;: it is not a directory</source>
        <translation>„%1“ lässt sich nicht öffnen: Es ist kein Verzeichnis</translation>
    </message>
    <message>
        <source>Could not read &quot;%1&quot;: it is larger than %2 bytes</source>
        <translation>„%1“ ist nicht lesbar: größer als %2 Bytes</translation>
    </message>
    <message>
        <source>Could not open &quot;%1&quot;: %2</source>
        <translation>„%1“ lässt sich nicht öffnen: %2</translation>
    </message>
    <message>
        <source>Could not list &quot;%1&quot;: %2</source>
        <translation>„%1“ lässt sich nicht auflisten: %2</translation>
    </message>
    <message>
        <source>Could not read &quot;%1&quot;: %2</source>
        <translation>„%1“ ist nicht lesbar: %2</translation>
    </message>
    <message>
        <source>Could not make &quot;%1&quot;: %2</source>
        <translation>„%1“ lässt sich nicht anlegen: %2</translation>
    </message>
    <message>
        <source>Could not write &quot;%1&quot;: %2</source>
        <translation>„%1“ lässt sich nicht schreiben: %2</translation>
    </message>
    <message>
        <source>Could not sync &quot;%1&quot;: %2</source>
        <translation>„%1“ lässt sich nicht auf den Datenträger bringen: %2</translation>
    </message>
    <message>
        <source>Could not move &quot;%1&quot;: %2</source>
        <translation>„%1“ lässt sich nicht verschieben: %2</translation>
    </message>
    <message>
        <source>Could not remove &quot;%1&quot;: %2</source>
        <translation>„%1“ lässt sich nicht entfernen: %2</translation>
    </message>
    <message>
        <source>it is no longer in the Trash</source>
        <translation>sie ist nicht mehr im Papierkorb</translation>
    </message>
    <message>
        <source>the system gave no reason</source>
        <translation>das System nannte keinen Grund</translation>
    </message>
    <message>
        <source>The settings in “%1” are of version %2, which this version of Quillo cannot change.</source>
        <translation>Die Einstellungen in „%1“ haben die Version %2, die diese Version von Quillo nicht ändern kann.</translation>
    </message>
    <message>
        <source>The settings in “%1” are damaged: %2</source>
        <translation>Die Einstellungen in „%1“ sind beschädigt: %2</translation>
    </message>
    <message>
        <source>This system has no system bus, over which its package manager could be asked for updates.</source>
        <translation>Dieses System hat keinen Systembus, über den seine Paketverwaltung nach Aktualisierungen gefragt werden könnte.</translation>
    </message>
    <message>
        <source>This system has no PackageKit service that Quillo could ask for updates. Update Quillo with the system&apos;s own package manager.</source>
        <translation>Dieses System hat keinen PackageKit-Dienst, den Quillo nach Aktualisierungen fragen könnte. Aktualisieren Sie Quillo mit der Paketverwaltung des Systems.</translation>
    </message>
    <message>
        <source>%1 was not installed from a package, so the system&apos;s package manager has no updates for it.</source>
        <translation>%1 wurde nicht aus einem Paket installiert; die Paketverwaltung des Systems hat daher keine Aktualisierungen dafür.</translation>
    </message>
    <message>
        <source>The system&apos;s package service failed: %1</source>
        <translation>Der Paketdienst des Systems meldet einen Fehler: %1</translation>
    </message>
    <message>
        <source>The system&apos;s package service has not answered for %1 seconds.</source>
        <translation>Der Paketdienst des Systems hat %1 Sekunden lang nicht geantwortet.</translation>
    </message>
    <message>
        <source>it ended before its work was done</source>
        <translation>er endete, bevor seine Arbeit getan war</translation>
    </message>
    <message>
        <source>it did not say why</source>
        <translation>er nannte keinen Grund</translation>
    </message>
    <message>
        <source> and </source>
        <translation> und </translation>
    </message>
    <message>
        <source>Focus an editable destination, then use %1</source>
        <translation>Klicken Sie in ein Feld, in das man schreiben kann, und drücken Sie dann %1</translation>
    </message>
    <message>
        <source>Multiple Accessibility windows claimed WindowServer ID %1.</source>
        <translation>Mehrere Fenster der Bedienungshilfen nennen dieselbe Fensternummer %1.</translation>
    </message>
    <message>
        <source>Accessibility exposed window IDs %1, but not frozen window %2.</source>
        <translation>Die Bedienungshilfen nennen die Fensternummern %1, aber nicht das festgehaltene Fenster %2.</translation>
    </message>
    <message>
        <source>The frame-matched Accessibility window did not match frozen title &quot;%1&quot; (exposed: %2).</source>
        <translation>Das Fenster in dieser Lage trägt nicht den festgehaltenen Titel „%1“ (sondern: %2).</translation>
    </message>
    <message>
        <source>%1 unnumbered Accessibility windows matched the frozen frame, so Quillo could not identify one safely.</source>
        <translation>%1 Fenster der Bedienungshilfen stimmen in der Lage überein; Quillo kann keines sicher zuordnen.</translation>
    </message>
    <message>
        <source>%1 unnumbered Accessibility windows matched the frozen dimensions and title across coordinate spaces, so Quillo could not identify one safely.</source>
        <translation>%1 Fenster der Bedienungshilfen stimmen in Größe und Titel überein; Quillo kann keines sicher zuordnen.</translation>
    </message>
    <message>
        <source>no title</source>
        <translation>ohne Titel</translation>
    </message>
</context>
<context>
    <name>quillo::MessagePage</name>
    <message>
        <source>&amp;Try Again</source>
        <translation>Erneut &amp;versuchen</translation>
    </message>
    <message>
        <source>Move to &amp;Trash</source>
        <translation>In den Papierk&amp;orb</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>Quillo</source>
        <translation>Quillo</translation>
    </message>
</context>
<context>
    <name>quillo::PastePreview</name>
    <message numerus="yes">
        <source>%1 characters, about %2 tokens.</source>
        <translation>
            <numerusform>%1 Zeichen, etwa %2 Token.</numerusform>
            <numerusform>%1 Zeichen, etwa %2 Token.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Chat fields may turn more than %1 characters into an attachment.</source>
        <translation>
            <numerusform>Chatfelder machen aus mehr als %1 Zeichen manchmal einen Anhang.</numerusform>
            <numerusform>Chatfelder machen aus mehr als %1 Zeichen manchmal einen Anhang.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quillo::PermissionRows</name>
    <message>
        <source>&amp;Allow…</source>
        <translation>&amp;Erlauben&#xa0;…</translation>
    </message>
    <message>
        <source>&amp;Explain…</source>
        <translation>E&amp;rklären&#xa0;…</translation>
    </message>
    <message>
        <source>Allow %1</source>
        <translation>%1 erlauben</translation>
    </message>
    <message>
        <source>Explain %1</source>
        <translation>%1 erklären</translation>
    </message>
    <message>
        <source>The accessibility bus does not answer. Install the package “at-spi2-core”, log out and in again, then choose Recheck.</source>
        <translation>Der Bus der Bedienungshilfen antwortet nicht. Installieren Sie das Paket „at-spi2-core“, melden Sie sich ab und wieder an, und wählen Sie dann „Erneut prüfen“.</translation>
    </message>
    <message>
        <source>This display does not let Quillo read the pixels of windows. Log in to an X11 session (many login screens offer it as “Xorg”), then choose Recheck.</source>
        <translation>Diese Anzeige lässt Quillo die Bildpunkte von Fenstern nicht lesen. Melden Sie sich in einer X11-Sitzung an (viele Anmeldebildschirme nennen sie „Xorg“), und wählen Sie dann „Erneut prüfen“.</translation>
    </message>
    <message>
        <source>Allowed</source>
        <translation>Erlaubt</translation>
    </message>
    <message>
        <source>Not allowed</source>
        <translation>Nicht erlaubt</translation>
    </message>
    <message>
        <source>%1: Allowed</source>
        <translation>%1: Erlaubt</translation>
    </message>
    <message>
        <source>%1: Not allowed yet</source>
        <translation>%1: Noch nicht erlaubt</translation>
    </message>
</context>
<context>
    <name>quillo::PracticeWindow</name>
    <message>
        <source>A Letter to Practise With</source>
        <translation>Ein Brief zum Üben</translation>
    </message>
    <message>
        <source>Dear reader,

this letter is here to be captured. When you press the capture shortcut, Quillo keeps a picture of this window and all of its words.

With kind regards</source>
        <translation>Liebe Leserin, lieber Leser,

dieser Brief ist zum Aufnehmen da. Wenn Sie den Kurzbefehl zum Aufnehmen drücken, behält Quillo ein Bild dieses Fensters und alle seine Worte.

Mit freundlichen Grüßen</translation>
    </message>
    <message>
        <source>Letter</source>
        <translation>Brief</translation>
    </message>
    <message>
        <source>Prompt</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Your prompt</source>
        <translation>Ihre Eingabe</translation>
    </message>
    <message>
        <source>Capture this window: press %1</source>
        <translation>Dieses Fenster aufnehmen: %1 drücken</translation>
    </message>
    <message>
        <source>Then paste into this field: press %1</source>
        <translation>Dann in dieses Feld einfügen: %1 drücken</translation>
    </message>
    <message numerus="yes">
        <source>The capture has arrived: %L1 characters. This is what a language model reads.</source>
        <translation>
            <numerusform>Die Aufnahme ist angekommen: %L1 Zeichen. Das liest ein Sprachmodell.</numerusform>
            <numerusform>Die Aufnahme ist angekommen: %L1 Zeichen. Das liest ein Sprachmodell.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quillo::QuickLook</name>
    <message>
        <source>Screenshot of %1</source>
        <translation>Bildschirmfoto von %1</translation>
    </message>
    <message>
        <source>This capture has no screenshot.</source>
        <translation>Diese Aufnahme hat kein Bildschirmfoto.</translation>
    </message>
    <message>
        <source>Loading the screenshot…</source>
        <translation>Das Bildschirmfoto wird geladen&#xa0;…</translation>
    </message>
</context>
<context>
    <name>quillo::ScreenshotPane</name>
    <message>
        <source>Screenshot</source>
        <translation>Bildschirmfoto</translation>
    </message>
    <message>
        <source>Plus and minus change the size, 0 shows the whole, 1 its own pixels; drag to move</source>
        <translation>Plus und Minus ändern die Größe, 0 zeigt alles, 1 die eigenen Bildpunkte; Ziehen verschiebt</translation>
    </message>
    <message>
        <source>Sc&amp;reenshot</source>
        <translation>Bi&amp;ldschirmfoto</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Ganz</translation>
    </message>
    <message>
        <source>Show the whole screenshot</source>
        <translation>Das ganze Bildschirmfoto zeigen</translation>
    </message>
    <message>
        <source>100%</source>
        <translation>100&#xa0;%</translation>
    </message>
    <message>
        <source>Show the screenshot at its own size</source>
        <translation>Das Bildschirmfoto in seiner eigenen Größe zeigen</translation>
    </message>
    <message>
        <source>Smaller screenshot</source>
        <translation>Bildschirmfoto verkleinern</translation>
    </message>
    <message>
        <source>Larger screenshot</source>
        <translation>Bildschirmfoto vergrößern</translation>
    </message>
    <message>
        <source>%1%</source>
        <comment>percent</comment>
        <translation>%1&#xa0;%</translation>
    </message>
</context>
<context>
    <name>quillo::ScreenshotView</name>
    <message>
        <source>Across the screenshot</source>
        <translation>Quer über das Bildschirmfoto</translation>
    </message>
    <message>
        <source>Down the screenshot</source>
        <translation>Das Bildschirmfoto hinab</translation>
    </message>
    <message>
        <source>%1 percent</source>
        <translation>%1 Prozent</translation>
    </message>
    <message>
        <source>Lit: %1</source>
        <translation>Hervorgehoben: %1</translation>
    </message>
</context>
<context>
    <name>quillo::SettingsPane</name>
    <message>
        <source>&amp;Start Quillo when I log in</source>
        <translation>Quillo beim A&amp;nmelden starten</translation>
    </message>
    <message>
        <source>Access</source>
        <translation>Zugriff</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Kurzbefehle</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Captures</source>
        <translation>Aufnahmen</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Aktualisierungen</translation>
    </message>
    <message>
        <source>Where captures are stored</source>
        <translation>Wo die Aufnahmen liegen</translation>
    </message>
    <message>
        <source>&amp;Open Folder</source>
        <translation>&amp;Ordner öffnen</translation>
    </message>
    <message>
        <source>Counting…</source>
        <translation>Wird gezählt&#xa0;…</translation>
    </message>
    <message numerus="yes">
        <source>%L1 captures</source>
        <translation>
            <numerusform>%L1 Aufnahme</numerusform>
            <numerusform>%L1 Aufnahmen</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
</context>
<context>
    <name>quillo::SetupWindow</name>
    <message>
        <source>&amp;Recheck</source>
        <translation>Erneut prü&amp;fen</translation>
    </message>
    <message>
        <source>Show &amp;Guide</source>
        <translation>Anleitung &amp;zeigen</translation>
    </message>
    <message>
        <source>&amp;Done</source>
        <translation>Fer&amp;tig</translation>
    </message>
    <message>
        <source>Setup &amp; Shortcuts</source>
        <translation>Einrichtung und Kurzbefehle</translation>
    </message>
    <message>
        <source>Welcome to Quillo</source>
        <translation>Willkommen bei Quillo</translation>
    </message>
</context>
<context>
    <name>quillo::ShortcutButton</name>
    <message>
        <source>Type the combination…</source>
        <translation>Tasten drücken&#xa0;…</translation>
    </message>
</context>
<context>
    <name>quillo::ShortcutRows</name>
    <message>
        <source>Control</source>
        <translation>Strg</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Umschalt</translation>
    </message>
    <message>
        <source>Super</source>
        <translation>Super</translation>
    </message>
    <message>
        <source>Capture the &amp;frontmost window</source>
        <translation>&amp;Vorderstes Fenster aufnehmen</translation>
    </message>
    <message>
        <source>&amp;Paste the selected capture</source>
        <translation>&amp;Ausgewählte Aufnahme einfügen</translation>
    </message>
    <message>
        <source>Keyboard shortcuts updated</source>
        <translation>Kurzbefehle geändert</translation>
    </message>
    <message>
        <source>%1: %2 %3</source>
        <translation>%1: %2 %3</translation>
    </message>
    <message>
        <source>Record another combination, or free this one in the program that has it. Quillo keeps trying.</source>
        <translation>Nehmen Sie eine andere Kombination, oder geben Sie diese in dem Programm frei, das sie hat. Quillo versucht es weiter.</translation>
    </message>
</context>
<context>
    <name>quillo::UpdatesSection</name>
    <message>
        <source>Check for &amp;Updates…</source>
        <translation>Nach Akt&amp;ualisierungen suchen&#xa0;…</translation>
    </message>
    <message>
        <source>Check for updates auto&amp;matically</source>
        <translation>Auto&amp;matisch nach Aktualisierungen suchen</translation>
    </message>
    <message>
        <source>Do&amp;wnload updates automatically</source>
        <translation>Aktualisierungen automatisch &amp;herunterladen</translation>
    </message>
    <message>
        <source>Asking the system&apos;s package manager…</source>
        <translation>Die Paketverwaltung des Systems wird gefragt&#xa0;…</translation>
    </message>
    <message>
        <source>Updates come from the system&apos;s package manager.</source>
        <translation>Aktualisierungen kommen von der Paketverwaltung des Systems.</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Nach Aktualisierungen wird gesucht&#xa0;…</translation>
    </message>
    <message>
        <source>Quillo is up to date.</source>
        <translation>Quillo ist auf dem neuesten Stand.</translation>
    </message>
    <message>
        <source>Quillo %1 is available.</source>
        <translation>Quillo %1 ist verfügbar.</translation>
    </message>
    <message>
        <source>Downloading Quillo %1…</source>
        <translation>Quillo %1 wird heruntergeladen&#xa0;…</translation>
    </message>
    <message>
        <source>Quillo %1 is downloaded and can be installed.</source>
        <translation>Quillo %1 ist heruntergeladen und kann installiert werden.</translation>
    </message>
    <message>
        <source>Installing Quillo %1…</source>
        <translation>Quillo %1 wird installiert&#xa0;…</translation>
    </message>
    <message>
        <source>Quillo %1 is installed. It is used from the next start on.</source>
        <translation>Quillo %1 ist installiert und wird ab dem nächsten Start benutzt.</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>Noch nicht gesucht</translation>
    </message>
    <message>
        <source>Last checked %1</source>
        <translation>Zuletzt gesucht: %1</translation>
    </message>
    <message>
        <source>S&amp;top</source>
        <translation>Sto&amp;ppen</translation>
    </message>
    <message>
        <source>Down&amp;load</source>
        <translation>Herunter&amp;laden</translation>
    </message>
    <message>
        <source>&amp;Install</source>
        <translation>&amp;Installieren</translation>
    </message>
</context>
</TS>
