<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>QObject</name>
    <message>
        <source>Band %1 returned fewer pixels than asked for.</source>
        <translation>Band %1 lieferte weniger Pixel als angefordert.</translation>
    </message>
    <message>
        <location filename="../../app/TZRasterLayerDrawer.cpp" line="+117"/>
        <source>The raster has no usable geo-transform.</source>
        <translation>Das Raster hat keine verwendbare Georeferenzierung.</translation>
    </message>
</context>
<context>
    <name>TZColorBtn</name>
    <message>
        <location filename="../../objectmodel/widgets/TZColorBtn.cpp" line="+19"/>
        <location line="+2"/>
        <location line="+14"/>
        <source>No color</source>
        <translation>Keine Farbe</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Select color</source>
        <translation>Farbe auswählen</translation>
    </message>
</context>
<context>
    <name>TZColorMenu</name>
    <message>
        <location filename="../../objectmodel/widgets/TZColorMenu.cpp" line="+63"/>
        <source>More colors...</source>
        <translation>Weitere Farben...</translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Select color</source>
        <translation>Farbe auswählen</translation>
    </message>
</context>
<context>
    <name>TZColorSchemeComboBox</name>
    <message>
        <location filename="../../objectmodel/widgets/TZColorSchemeComboBox.cpp" line="+125"/>
        <location line="+13"/>
        <source>Custom</source>
        <translation>Benutzerdefiniert</translation>
    </message>
    <message>
        <location line="-3"/>
        <source>Current</source>
        <translation>Aktuell</translation>
    </message>
</context>
<context>
    <name>TZControlRender</name>
    <message>
        <location filename="../../forms/TZControlRender.ui" line="+29"/>
        <source>Symbol rendering</source>
        <translation>Symbolisierung</translation>
    </message>
    <message>
        <location line="+46"/>
        <source>Layer name :</source>
        <translation>Layername:</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Rendering style :</source>
        <translation>Darstellungsart:</translation>
    </message>
    <message>
        <location line="+21"/>
        <source>No-render</source>
        <translation>Keine Darstellung</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Don&apos;t render</source>
        <translation>Nicht darstellen</translation>
    </message>
    <message>
        <location filename="../../render/TZControlRender.cpp" line="+75"/>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <location line="+40"/>
        <location line="+69"/>
        <source>Not to render</source>
        <translation>Nicht darstellen</translation>
    </message>
</context>
<context>
    <name>TZDialogAddValueToUniqueValue</name>
    <message>
        <location filename="../../forms/TZDialogAddValueToUniqueValue.ui" line="+14"/>
        <source>Add value</source>
        <translation>Wert hinzufügen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Select values to add:</source>
        <translation>Hinzuzufügende Werte auswählen:</translation>
    </message>
    <message>
        <location line="+20"/>
        <source>New value</source>
        <translation>Neuer Wert</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>You can add values to the list above</source>
        <translation>Sie können der Liste oben weitere Werte hinzufügen</translation>
    </message>
    <message>
        <location line="+25"/>
        <source>&amp;Ok</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
<context>
    <name>TZDialogRotateByField</name>
    <message>
        <location filename="../../forms/TZDialogRotateByField.ui" line="+26"/>
        <source>Rotate</source>
        <translation>Drehen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Rotate Points by Angle in this  field:</source>
        <translation>Punkte um den Winkel aus diesem Feld drehen:</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Rotation Style:</source>
        <translation>Rotationsstil:</translation>
    </message>
    <message>
        <location line="+43"/>
        <source>Geographic</source>
        <translation>Geografisch</translation>
    </message>
    <message>
        <location line="+44"/>
        <source>Arithmetic</source>
        <translation>Arithmetisch</translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Random</source>
        <translation>Zufällig</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Min:</source>
        <translation>Min.:</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Max:</source>
        <translation>Max.:</translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZDialogRotateByField.cpp" line="+25"/>
        <source>Error!</source>
        <translation>Fehler!</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Bad layer type</source>
        <translation>Ungeeigneter Layertyp</translation>
    </message>
    <message>
        <location line="+13"/>
        <location line="+33"/>
        <source>&lt;none&gt;</source>
        <translation>&lt;none&gt;</translation>
    </message>
    <message>
        <location line="-32"/>
        <location line="+21"/>
        <source>&lt;random&gt;</source>
        <translation>&lt;random&gt;</translation>
    </message>
</context>
<context>
    <name>TZFeatureLayerDrawer</name>
    <message>
        <location filename="../../app/TZFeatureLayerDrawer.cpp" line="+140"/>
        <source>The %1 render could not draw the layer.</source>
        <translation>Die Darstellung %1 konnte den Layer nicht zeichnen.</translation>
    </message>
</context>
<context>
    <name>TZLayerOpener</name>
    <message>
        <source>GDAL cannot read &quot;%1&quot;: %2</source>
        <translation>GDAL kann „%1“ nicht lesen: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not found.</source>
        <translation>„%1“ wurde nicht gefunden.</translation>
    </message>
    <message>
        <location filename="../../app/TZLayerOpener.cpp" line="+41"/>
        <source>&quot;%1&quot; is not a vector or raster source GDAL can read.</source>
        <translation>„%1“ ist keine Vektor- oder Rasterquelle, die GDAL lesen kann.</translation>
    </message>
    <message>
        <location line="+25"/>
        <source>&quot;%1&quot; holds no layer.</source>
        <translation>„%1“ enthält keinen Layer.</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Unknown layer kind &quot;%1&quot;.</source>
        <translation>Unbekannte Layerart „%1“.</translation>
    </message>
</context>
<context>
    <name>TZLayerTree</name>
    <message>
        <location filename="../../app/TZLayerTree.cpp" line="+167"/>
        <source>Not rendered</source>
        <translation>Nicht dargestellt</translation>
    </message>
</context>
<context>
    <name>TZMapProject</name>
    <message>
        <source>The symbology of &quot;%1&quot; is not a render object. It is drawn with its default symbology.</source>
        <translation>Die Symbolisierung von „%1“ ist kein Darstellungsobjekt. Der Layer wird mit seiner Standardsymbolisierung gezeichnet.</translation>
    </message>
    <message>
        <source>The symbology of &quot;%1&quot; could not be read: %2. It is drawn with its default symbology.</source>
        <translation>Die Symbolisierung von „%1“ konnte nicht gelesen werden: %2. Der Layer wird mit seiner Standardsymbolisierung gezeichnet.</translation>
    </message>
    <message>
        <location filename="../../app/TZMapProject.cpp" line="+101"/>
        <source>Cannot write &quot;%1&quot;: %2</source>
        <translation>„%1“ kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Cannot read &quot;%1&quot;: %2</source>
        <translation>„%1“ kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>&quot;%1&quot; is not a tzmap project.</source>
        <translation>„%1“ ist kein tzmap-Projekt.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>&quot;%1&quot; was written by a newer tzmap.</source>
        <translation>„%1“ wurde von einer neueren tzmap-Version geschrieben.</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Layer &quot;%1&quot; was left out: %2</source>
        <translation>Layer „%1“ wurde ausgelassen: %2</translation>
    </message>
</context>
<context>
    <name>TZMapRenderJob</name>
    <message>
        <location filename="../../app/TZMapRenderJob.cpp" line="+37"/>
        <location line="+4"/>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>TZMapWindow</name>
    <message>
        <location filename="../../app/TZMapWindow.cpp" line="+63"/>
        <source>Layers</source>
        <translation>Layer</translation>
    </message>
    <message>
        <location line="+44"/>
        <source>&amp;Open Data...</source>
        <translation>Daten ö&amp;ffnen...</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Add vector or raster layers from files</source>
        <translation>Vektor- oder Rasterlayer aus Dateien hinzufügen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Open Raster &amp;Folder...</source>
        <translation>&amp;Rasterordner öffnen...</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Add a folder of rasters as one mosaic layer</source>
        <translation>Einen Ordner mit Rastern als einen Mosaiklayer hinzufügen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Open Data &amp;Source...</source>
        <translation>Daten&amp;quelle öffnen...</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Add layers from a data source name, such as a PostGIS connection</source>
        <translation>Layer aus einer Datenquelle hinzufügen, etwa einer PostGIS-Verbindung</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Open &amp;Project...</source>
        <translation>&amp;Projekt öffnen...</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>&amp;Save Project</source>
        <translation>Projekt &amp;speichern</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Save Project &amp;As...</source>
        <translation>Projekt speichern &amp;unter...</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Zoom &amp;In</source>
        <translation>Ver&amp;größern</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Zoom &amp;Out</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Zoom to &amp;All</source>
        <translation>&amp;Alles anzeigen</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Zoom to &amp;Layer</source>
        <translation>Auf &amp;Layer zoomen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&amp;Refresh</source>
        <translation>&amp;Neu zeichnen</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>&amp;Symbology...</source>
        <translation>&amp;Symbolisierung...</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Show the symbol rendering of the selected layer</source>
        <translation>Die Symbolisierung des ausgewählten Layers anzeigen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&amp;Remove Layer</source>
        <translation>Layer &amp;entfernen</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>&amp;About tzmap</source>
        <translation>Ü&amp;ber tzmap</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>&amp;Layer</source>
        <translation>&amp;Layer</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Map</source>
        <translation>Karte</translation>
    </message>
    <message>
        <location line="+55"/>
        <location line="+11"/>
        <location line="+27"/>
        <source>Error!</source>
        <translation>Fehler!</translation>
    </message>
    <message>
        <location line="-11"/>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <location line="+34"/>
        <source>Open Data</source>
        <translation>Daten öffnen</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Open Raster Folder</source>
        <translation>Rasterordner öffnen</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Open Data Source</source>
        <translation>Datenquelle öffnen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Data source (a path, or a connection such as PG:dbname=gis):</source>
        <translation>Datenquelle (ein Pfad oder eine Verbindung wie PG:dbname=gis):</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Open Project</source>
        <translation>Projekt öffnen</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Save Project</source>
        <translation>Projekt speichern</translation>
    </message>
    <message>
        <location line="+44"/>
        <source>About tzmap</source>
        <translation>Über tzmap</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;h3&gt;tzmap&lt;/h3&gt;&lt;p&gt;The reference desktop host of the TZRender symbology library: open vector and raster data, choose how each layer is drawn in the &lt;i&gt;Symbol rendering&lt;/i&gt; dock, and save the result as a project.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;tzmap&lt;/h3&gt;&lt;p&gt;Die Desktop-Referenzanwendung der Symbolisierungsbibliothek TZRender: Vektor- und Rasterdaten öffnen, im Fenster &lt;i&gt;Symbolisierung&lt;/i&gt; festlegen, wie jeder Layer gezeichnet wird, und das Ergebnis als Projekt speichern.&lt;/p&gt;</translation>
    </message>
    <message>
        <location line="+32"/>
        <source>Scale 1:%L1</source>
        <translation>Maßstab 1:%L1</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>X %L1  Y %L2</source>
        <translation>X %L1  Y %L2</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Not every layer could be drawn: %1</source>
        <translation>Nicht alle Layer konnten gezeichnet werden: %1</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Untitled</source>
        <translation>Unbenannt</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>%1[*] - tzmap</source>
        <translation>%1[*] - tzmap</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>tzmap</source>
        <translation>tzmap</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>The project has unsaved changes.
Do you want to save them?</source>
        <translation>Das Projekt hat ungespeicherte Änderungen.
Möchten Sie sie speichern?</translation>
    </message>
</context>
<context>
    <name>TZModelUniqueValues</name>
    <message>
        <location filename="../../panels/vector/TZModelUniqueValues.cpp" line="+150"/>
        <source>Symbols</source>
        <translation>Symbole</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Label</source>
        <translation>Legende</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Count</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <location line="+348"/>
        <location line="+1"/>
        <source>Wait</source>
        <translation>Bitte warten</translation>
    </message>
</context>
<context>
    <name>TZQueryBuilder</name>
    <message>
        <location filename="../../forms/TZQueryBuilder.ui" line="+9"/>
        <source>Query builder</source>
        <translation>Abfrageeditor</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Fields</source>
        <translation>Felder</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Values</source>
        <translation>Werte</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Sample</source>
        <translation>Stichprobe</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Operators</source>
        <translation>Operatoren</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>=</source>
        <translation>=</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;</source>
        <translation>&lt;</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&gt;</source>
        <translation>&gt;</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>LIKE</source>
        <translation>LIKE</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>IN</source>
        <translation>IN</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;&gt;</source>
        <translation>&lt;&gt;</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;=</source>
        <translation>&lt;=</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&gt;=</source>
        <translation>&gt;=</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>AND</source>
        <translation>AND</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>OR</source>
        <translation>OR</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>NOT</source>
        <translation>NOT</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>IS NULL</source>
        <translation>IS NULL</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>(</source>
        <translation>(</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>)</source>
        <translation>)</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>SELECT * FROM layer WHERE:</source>
        <translation>SELECT * FROM layer WHERE:</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Test</source>
        <translation>Testen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <location filename="../../objectmodel/widgets/TZQueryBuilder.cpp" line="+59"/>
        <source>Query builder - %1</source>
        <translation>Abfrageeditor - %1</translation>
    </message>
    <message>
        <location line="+53"/>
        <source>There is no layer to query.</source>
        <translation>Es gibt keinen Layer, der abgefragt werden kann.</translation>
    </message>
    <message>
        <location line="+32"/>
        <source>Counting features...</source>
        <translation>Objekte werden gezählt...</translation>
    </message>
    <message>
        <location line="+25"/>
        <location line="+83"/>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <location line="-83"/>
        <source>The expression is not valid:
%1</source>
        <translation>Der Ausdruck ist ungültig:
%1</translation>
    </message>
    <message>
        <location line="+56"/>
        <source>Reading values...</source>
        <translation>Werte werden gelesen...</translation>
    </message>
    <message>
        <location line="+28"/>
        <source>The values of %1 could not be read:
%2</source>
        <translation>Die Werte von %1 konnten nicht gelesen werden:
%2</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>The expression is not valid: %1</source>
        <translation>Der Ausdruck ist ungültig: %1</translation>
    </message>
    <message numerus="yes">
        <location line="+2"/>
        <source>The expression selects %n feature(s).</source>
        <translation>
            <numerusform>Der Ausdruck wählt %n Objekt aus.</numerusform>
            <numerusform>Der Ausdruck wählt %n Objekte aus.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TZRenderPanelSingleSymbol</name>
    <message>
        <location filename="../../forms/TZRenderPanelSingleSymbol.ui" line="+14"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+26"/>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <location line="+37"/>
        <source>Symbol priority</source>
        <translation>Symbolpriorität</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Label:</source>
        <translation>Legende:</translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelSingleSymbol.cpp" line="+72"/>
        <source>Single symbol</source>
        <translation>Einzelsymbol</translation>
    </message>
    <message>
        <location line="+109"/>
        <source>Symbol</source>
        <translation>Symbol</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Symbol name</source>
        <translation>Symbolname</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>-1-</source>
        <translation>-1-</translation>
    </message>
</context>
<context>
    <name>TZRenderPanelUniqueValues</name>
    <message>
        <location filename="../../forms/TZRenderPanelUniqueValues.ui" line="+6"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Value Field:</source>
        <translation>Wertfeld:</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Color Ramp:</source>
        <translation>Farbverlauf:</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>OutLine:</source>
        <translation>Umriss:</translation>
    </message>
    <message>
        <location line="+15"/>
        <location filename="../../panels/vector/TZRenderPanelUniqueValues.cpp" line="+357"/>
        <source>Point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>MM</source>
        <translation>mm</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>CM</source>
        <translation>cm</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Inch</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Default outline style</source>
        <translation>Standard-Umrissstil</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>symbol priority</source>
        <translation>Symbolpriorität</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>show count(may take times)</source>
        <translation>Anzahl anzeigen (kann dauern)</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Add all values</source>
        <translation>Alle Werte hinzufügen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Add values</source>
        <translation>Werte hinzufügen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete values</source>
        <translation>Werte löschen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete all values</source>
        <translation>Alle Werte löschen</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelUniqueValues.cpp" line="-300"/>
        <source>Unique Values</source>
        <translation>Eindeutige Werte</translation>
    </message>
    <message>
        <location line="+208"/>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>No items selected!</source>
        <translation>Keine Einträge ausgewählt!</translation>
    </message>
</context>
<context>
    <name>TZSetupDialogDefautOutLineStyle</name>
    <message>
        <location filename="../../forms/TZSetupDialogDefautOutLineStyle.ui" line="+14"/>
        <source>Setup</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Default outline style:</source>
        <translation>Standard-Umrissstil:</translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Width:</source>
        <translation>Breite:</translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Unit:</source>
        <translation>Einheit:</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>MM</source>
        <translation>mm</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>CM</source>
        <translation>cm</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Inch</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Color:</source>
        <translation>Farbe:</translation>
    </message>
    <message>
        <location line="+27"/>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>TZStyleSelectorDialog</name>
    <message>
        <location filename="../../forms/TZStyleSelectorDialog.ui" line="+9"/>
        <source>Select symbol</source>
        <translation>Symbol auswählen</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Style database:</source>
        <translation>Stildatenbank:</translation>
    </message>
    <message>
        <location line="+42"/>
        <source>Adjust</source>
        <translation>Anpassen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Color:</source>
        <translation>Farbe:</translation>
    </message>
    <message>
        <location line="+6"/>
        <location filename="../../objectmodel/widgets/TZStyleSelectorDialog.cpp" line="+135"/>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Outline color:</source>
        <translation>Umrissfarbe:</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Outline width:</source>
        <translation>Umrissbreite:</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Angle:</source>
        <translation>Winkel:</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>°</source>
        <translation>°</translation>
    </message>
    <message>
        <location filename="../../objectmodel/widgets/TZStyleSelectorDialog.cpp" line="-86"/>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <location line="+86"/>
        <source>Width:</source>
        <translation>Breite:</translation>
    </message>
    <message>
        <location line="+66"/>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Please choose a symbol.</source>
        <translation>Bitte wählen Sie ein Symbol aus.</translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Error!</source>
        <translation>Fehler!</translation>
    </message>
</context>
<context>
    <name>TZWaitDialog</name>
    <message>
        <location filename="../../forms/TZWaitDialog.ui" line="+20"/>
        <source>Please wait</source>
        <translation>Bitte warten</translation>
    </message>
    <message>
        <location filename="../../objectmodel/widgets/TZWaitDialog.cpp" line="+36"/>
        <source>The task stopped with an unknown error.</source>
        <translation>Die Aufgabe wurde mit einem unbekannten Fehler abgebrochen.</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>The task failed.</source>
        <translation>Die Aufgabe ist fehlgeschlagen.</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <location filename="../../app/main.cpp" line="+56"/>
        <source>Desktop map viewer and symbology editor.</source>
        <translation>Desktop-Kartenbetrachter und Symbolisierungseditor.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Draw the window, save it as a PNG image and exit.</source>
        <translation>Das Fenster zeichnen, als PNG-Bild speichern und beenden.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Select the named layer and show its symbology.</source>
        <translation>Den genannten Layer auswählen und seine Symbolisierung anzeigen.</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Data sources, raster folders or a .tzmap project.</source>
        <translation>Datenquellen, Rasterordner oder ein .tzmap-Projekt.</translation>
    </message>
</context>
</TS>
