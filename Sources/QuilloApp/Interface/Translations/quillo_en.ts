<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>quillo::Coverage</name>
    <message numerus="yes">
        <source>%1 elements</source>
        <translation>
            <numerusform>%1 element</numerusform>
            <numerusform>%1 elements</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 characters</source>
        <translation>
            <numerusform>%1 character</numerusform>
            <numerusform>%1 characters</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>in %1 places</source>
        <translation>
            <numerusform>in %1 place</numerusform>
            <numerusform>in %1 places</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 more notes.</source>
        <translation>
            <numerusform>%1 more note.</numerusform>
            <numerusform>%1 more notes.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 (%2 times)</source>
        <translation>
            <numerusform>%1 (%2 time)</numerusform>
            <numerusform>%1 (%2 times)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>, %1 protected</source>
        <translation>
            <numerusform>, %1 protected</numerusform>
            <numerusform>, %1 protected</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quillo::FeedPane</name>
    <message numerus="yes">
        <source>%1 captures</source>
        <translation>
            <numerusform>%1 capture</numerusform>
            <numerusform>%1 captures</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %2 captures</source>
        <translation>
            <numerusform>%1 of %2 capture</numerusform>
            <numerusform>%1 of %2 captures</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quillo::GuidePane</name>
    <message numerus="yes">
        <source>Pasted: %L1 characters have arrived.</source>
        <translation>
            <numerusform>Pasted: %L1 character has arrived.</numerusform>
            <numerusform>Pasted: %L1 characters have arrived.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quillo::LedgerPane</name>
    <message numerus="yes">
        <source>%1 matches</source>
        <translation>
            <numerusform>%1 match</numerusform>
            <numerusform>%1 matches</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quillo::Message</name>
    <message numerus="yes">
        <source>%n artifacts moved to Trash</source>
        <translation>
            <numerusform>%n artifact moved to Trash</numerusform>
            <numerusform>%n artifacts moved to Trash</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n artifacts put back from Trash</source>
        <translation>
            <numerusform>%n artifact put back from Trash</numerusform>
            <numerusform>%n artifacts put back from Trash</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n elements, complete</source>
        <translation>
            <numerusform>%n element, complete</numerusform>
            <numerusform>%n elements, complete</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n elements, partial: %1</source>
        <translation>
            <numerusform>%n element, partial: %1</numerusform>
            <numerusform>%n elements, partial: %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n reading problems</source>
        <translation>
            <numerusform>%n reading problem</numerusform>
            <numerusform>%n reading problems</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quillo::PastePreview</name>
    <message numerus="yes">
        <source>%1 characters, about %2 tokens.</source>
        <translation>
            <numerusform>%1 character, about %2 tokens.</numerusform>
            <numerusform>%1 characters, about %2 tokens.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Chat fields may turn more than %1 characters into an attachment.</source>
        <translation>
            <numerusform>Chat fields may turn more than %1 character into an attachment.</numerusform>
            <numerusform>Chat fields may turn more than %1 characters into an attachment.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quillo::PracticeWindow</name>
    <message numerus="yes">
        <source>The capture has arrived: %L1 characters. This is what a language model reads.</source>
        <translation>
            <numerusform>The capture has arrived: %L1 character. This is what a language model reads.</numerusform>
            <numerusform>The capture has arrived: %L1 characters. This is what a language model reads.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quillo::SettingsPane</name>
    <message numerus="yes">
        <source>%L1 captures</source>
        <translation>
            <numerusform>%L1 capture</numerusform>
            <numerusform>%L1 captures</numerusform>
        </translation>
    </message>
</context>
</TS>
