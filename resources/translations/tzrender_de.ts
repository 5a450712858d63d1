<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>QObject</name>
    <message>
        <location filename="../../app/TZRasterLayerDrawer.cpp" line="+168"/>
        <source>Band %1 returned fewer pixels than asked for.</source>
        <translation>Band %1 lieferte weniger Pixel als angefordert.</translation>
    </message>
    <message>
        <location line="-44"/>
        <source>The raster has no usable geo-transform.</source>
        <translation>Das Raster hat keine verwendbare Georeferenzierung.</translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelRuleBased.cpp" line="+41"/>
        <source>Unknown error</source>
        <translation>Unbekannter Fehler</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Error!</source>
        <translation>Fehler!</translation>
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
        <location filename="../../render/TZControlRender.cpp" line="+93"/>
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
        <location line="+87"/>
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
    <name>TZDialogBandPixHistogram</name>
    <message>
        <location filename="../../forms/TZDialogBandPixHistogram.ui" line="+14"/>
        <source>Band Pixel Histogram</source>
        <translation>Pixelhistogramm des Bandes</translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Statistics Value</source>
        <translation>Statistikwerte</translation>
    </message>
    <message>
        <location line="+6"/>
        <location filename="../../panels/raster/TZDialogBandPixHistogram.cpp" line="+145"/>
        <source>Min Value:</source>
        <translation>Minimalwert:</translation>
    </message>
    <message>
        <location line="+7"/>
        <location filename="../../panels/raster/TZDialogBandPixHistogram.cpp" line="+1"/>
        <source>Max Value:</source>
        <translation>Maximalwert:</translation>
    </message>
    <message>
        <location line="+7"/>
        <location filename="../../panels/raster/TZDialogBandPixHistogram.cpp" line="+1"/>
        <source>Average Value:</source>
        <translation>Mittelwert:</translation>
    </message>
    <message>
        <location line="+7"/>
        <location filename="../../panels/raster/TZDialogBandPixHistogram.cpp" line="+1"/>
        <source>Standard Deviation:</source>
        <translation>Standardabweichung:</translation>
    </message>
    <message>
        <location line="+14"/>
        <location filename="../../panels/raster/TZDialogBandPixHistogram.cpp" line="+2"/>
        <location line="+19"/>
        <source>Value:</source>
        <translation>Wert:</translation>
    </message>
    <message>
        <location line="+7"/>
        <location filename="../../panels/raster/TZDialogBandPixHistogram.cpp" line="-20"/>
        <location line="+19"/>
        <source>Statistical Data:</source>
        <translation>Statistische Daten:</translation>
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
        <location filename="../../app/TZFeatureLayerDrawer.cpp" line="+307"/>
        <source>The %1 render could not draw the layer.</source>
        <translation>Die Darstellung %1 konnte den Layer nicht zeichnen.</translation>
    </message>
</context>
<context>
    <name>TZLayerOpener</name>
    <message>
        <location filename="../../app/TZLayerOpener.cpp" line="+56"/>
        <source>GDAL cannot read &quot;%1&quot;: %2</source>
        <translation>GDAL kann „%1“ nicht lesen: %2</translation>
    </message>
    <message>
        <location line="-19"/>
        <location line="+56"/>
        <source>&quot;%1&quot; was not found.</source>
        <translation>„%1“ wurde nicht gefunden.</translation>
    </message>
    <message>
        <location line="-35"/>
        <source>&quot;%1&quot; is not a vector or raster source GDAL can read.</source>
        <translation>„%1“ ist keine Vektor- oder Rasterquelle, die GDAL lesen kann.</translation>
    </message>
    <message>
        <location line="+25"/>
        <source>&quot;%1&quot; holds no layer.</source>
        <translation>„%1“ enthält keinen Layer.</translation>
    </message>
    <message>
        <location line="+26"/>
        <source>Unknown layer kind &quot;%1&quot;.</source>
        <translation>Unbekannte Layerart „%1“.</translation>
    </message>
</context>
<context>
    <name>TZLayerTree</name>
    <message>
        <location filename="../../app/TZLayerLegend.cpp" line="+41"/>
        <source>Not rendered</source>
        <translation>Nicht dargestellt</translation>
    </message>
    <message>
        <location line="+86"/>
        <source>1 dot = %1 %2</source>
        <translation>1 Punkt = %1 %2</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Density: sparse to dense</source>
        <translation>Dichte: gering bis hoch</translation>
    </message>
    <message>
        <location line="+42"/>
        <source>Uncolored</source>
        <translation>Nicht eingefärbt</translation>
    </message>
</context>
<context>
    <name>TZLayerTreeModel</name>
    <message>
        <location filename="../../app/TZLayerTreeModel.cpp" line="+344"/>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>%1 — %L2 classes</source>
        <translation>%1 — %L2 Klassen</translation>
    </message>
</context>
<context>
    <name>TZMapProject</name>
    <message>
        <location filename="../../app/TZMapProject.cpp" line="+171"/>
        <source>The symbology of &quot;%1&quot; is not a render object. It is drawn with its default symbology.</source>
        <translation>Die Symbolisierung von „%1“ ist kein Darstellungsobjekt. Der Layer wird mit seiner Standardsymbolisierung gezeichnet.</translation>
    </message>
    <message>
        <location line="-5"/>
        <source>The symbology of &quot;%1&quot; could not be read: %2. It is drawn with its default symbology.</source>
        <translation>Die Symbolisierung von „%1“ konnte nicht gelesen werden: %2. Der Layer wird mit seiner Standardsymbolisierung gezeichnet.</translation>
    </message>
    <message>
        <location line="-55"/>
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
        <location line="+18"/>
        <source>Layer &quot;%1&quot; was left out: %2</source>
        <translation>Layer „%1“ wurde ausgelassen: %2</translation>
    </message>
</context>
<context>
    <name>TZMapRenderJob</name>
    <message>
        <location filename="../../app/TZMapRenderJob.cpp" line="+58"/>
        <location line="+4"/>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>TZMapWindow</name>
    <message>
        <location filename="../../app/TZMapWindow.cpp" line="+68"/>
        <source>Layers</source>
        <translation>Layer</translation>
    </message>
    <message>
        <location line="+46"/>
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
        <source>Add &amp;PostGIS Layer...</source>
        <translation>P&amp;ostGIS-Layer hinzufügen...</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Connect to a PostGIS database and add some of its spatial tables</source>
        <translation>Mit einer PostGIS-Datenbank verbinden und einige ihrer räumlichen Tabellen hinzufügen</translation>
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
        <location line="+5"/>
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
        <location line="+12"/>
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
        <location line="+58"/>
        <location line="+130"/>
        <source>Opening the data...</source>
        <translation>Daten werden geöffnet...</translation>
    </message>
    <message>
        <location line="-108"/>
        <location line="+17"/>
        <location line="+33"/>
        <location line="+73"/>
        <source>Error!</source>
        <translation>Fehler!</translation>
    </message>
    <message>
        <location line="-110"/>
        <source>Opening the project...</source>
        <translation>Projekt wird geöffnet...</translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Saving the project...</source>
        <translation>Projekt wird gespeichert...</translation>
    </message>
    <message>
        <location line="+28"/>
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
        <location line="+40"/>
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
        <location line="+34"/>
        <source>Not every layer could be drawn: %1</source>
        <translation>Nicht alle Layer konnten gezeichnet werden: %1</translation>
    </message>
    <message>
        <location line="+9"/>
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
    <name>TZModelColorList</name>
    <message>
        <location filename="../../panels/raster/TZModelColorList.cpp" line="+53"/>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
</context>
<context>
    <name>TZModelGradingSymbol</name>
    <message>
        <location filename="../../panels/vector/TZModelGradingSymbol.cpp" line="+211"/>
        <source>symbols</source>
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
        <location line="+216"/>
        <location line="+1"/>
        <source>Wait</source>
        <translation>Bitte warten</translation>
    </message>
    <message>
        <location line="+161"/>
        <location line="+23"/>
        <location line="+23"/>
        <location line="+11"/>
        <location line="+20"/>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <location line="-77"/>
        <source>No other values</source>
        <translation>Keine weiteren Werte</translation>
    </message>
    <message>
        <location line="+24"/>
        <source>The number of currently obtained grading symbol items is greater than the level set!</source>
        <translation>Es wurden mehr Klassen ermittelt, als die eingestellte Klassenanzahl zulässt!</translation>
    </message>
    <message>
        <location line="+22"/>
        <location line="+11"/>
        <source>Export file failed!</source>
        <translation>Export der Datei fehlgeschlagen!</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Export file successful!</source>
        <translation>Datei erfolgreich exportiert!</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Open file</source>
        <translation>Datei öffnen</translation>
    </message>
    <message>
        <location line="+0"/>
        <location line="+15"/>
        <source>Values(*.txt)</source>
        <translation>Werte (*.txt)</translation>
    </message>
    <message>
        <location line="-4"/>
        <source>Please add the grading symbol item first!</source>
        <translation>Bitte fügen Sie zuerst Klassen hinzu!</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Export file</source>
        <translation>Datei exportieren</translation>
    </message>
</context>
<context>
    <name>TZModelMatchToSymbols</name>
    <message>
        <location filename="../../panels/vector/TZModelMatchToSymbols.cpp" line="+89"/>
        <location line="+1"/>
        <source>Wait</source>
        <translation>Bitte warten</translation>
    </message>
    <message>
        <location line="+93"/>
        <source>Scale filter</source>
        <translation>Maßstabsfilter</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>MinScale</source>
        <translation>Min. Maßstab</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>MaxScale</source>
        <translation>Max. Maßstab</translation>
    </message>
</context>
<context>
    <name>TZModelUniqueValues</name>
    <message>
        <location filename="../../panels/vector/TZModelUniqueValues.cpp" line="+158"/>
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
        <location line="+397"/>
        <location line="+1"/>
        <source>Wait</source>
        <translation>Bitte warten</translation>
    </message>
</context>
<context>
    <name>TZModelUniqueValuesByManyFields</name>
    <message>
        <location filename="../../panels/vector/TZModelUniqueValuesByManyFields.cpp" line="+44"/>
        <source>warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>This data big, get unique data is slowly,would you like to continus?</source>
        <translation>Die Datenmenge ist groß, das Ermitteln der eindeutigen Werte kann lange dauern. Möchten Sie fortfahren?</translation>
    </message>
</context>
<context>
    <name>TZPostgisCatalog</name>
    <message>
        <location filename="../../app/TZPostgisCatalog.cpp" line="+45"/>
        <source>The server asks for a password: %1</source>
        <translation>Der Server verlangt ein Passwort: %1</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Cannot connect: %1</source>
        <translation>Keine Verbindung möglich: %1</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>The database has no PostGIS extension (it has no geometry_columns).</source>
        <translation>Die Datenbank hat keine PostGIS-Erweiterung (ihr fehlt geometry_columns).</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Cannot list the tables: %1</source>
        <translation>Die Tabellen können nicht aufgelistet werden: %1</translation>
    </message>
</context>
<context>
    <name>TZPostgisDialog</name>
    <message>
        <location filename="../../forms/TZPostgisDialog.ui" line="+14"/>
        <source>Add PostGIS Layer</source>
        <translation>PostGIS-Layer hinzufügen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Connection</source>
        <translation>Verbindung</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>&amp;Service:</source>
        <translation>&amp;Dienst:</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>A service of your PostgreSQL service file (~/.pg_service.conf); the fields below add to or override it</source>
        <translation>Ein Dienst aus Ihrer PostgreSQL-Dienstdatei (~/.pg_service.conf); die Felder darunter ergänzen oder überschreiben ihn</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>&amp;Host or socket folder:</source>
        <translation>&amp;Host oder Socket-Ordner:</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>localhost, db.example.org or /var/run/postgresql</source>
        <translation>localhost, db.example.org oder /var/run/postgresql</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>&amp;Port:</source>
        <translation>&amp;Port:</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>5432</source>
        <translation>5432</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>&amp;Database:</source>
        <translation>Daten&amp;bank:</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>&amp;User:</source>
        <translation>Be&amp;nutzer:</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Pass&amp;word:</source>
        <translation>Pass&amp;wort:</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>empty: from ~/.pgpass, or asked for when needed</source>
        <translation>leer: aus ~/.pgpass oder bei Bedarf abgefragt</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>&amp;Connect</source>
        <translation>&amp;Verbinden</translation>
    </message>
    <message>
        <location line="+31"/>
        <source>Spatial &amp;tables and views (choose one or more):</source>
        <translation>Räumliche &amp;Tabellen und Sichten (eine oder mehrere auswählen):</translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Table</source>
        <translation>Tabelle</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Geometry column</source>
        <translation>Geometriespalte</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>SRID</source>
        <translation>SRID</translation>
    </message>
    <message>
        <location filename="../../app/TZPostgisDialog.cpp" line="+27"/>
        <source>&amp;Add</source>
        <translation>Hinzu&amp;fügen</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>The server did not answer within %1 seconds.</source>
        <translation>Der Server hat nicht innerhalb von %1 Sekunden geantwortet.</translation>
    </message>
    <message>
        <location line="+60"/>
        <source>Connecting...</source>
        <translation>Verbindung wird hergestellt...</translation>
    </message>
    <message>
        <location line="+30"/>
        <source>view</source>
        <translation>Sicht</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>table</source>
        <translation>Tabelle</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Connected. The database has no spatial tables or views.</source>
        <translation>Verbunden. Die Datenbank hat keine räumlichen Tabellen oder Sichten.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Connected: 1 spatial table or view.</source>
        <translation>Verbunden: 1 räumliche Tabelle oder Sicht.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Connected: %1 spatial tables and views.</source>
        <translation>Verbunden: %1 räumliche Tabellen und Sichten.</translation>
    </message>
</context>
<context>
    <name>TZPostgisLogin</name>
    <message>
        <location filename="../../app/TZPostgisLogin.cpp" line="+70"/>
        <source>PostGIS Password</source>
        <translation>PostGIS-Passwort</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>%1
%2

Password:</source>
        <translation>%1
%2

Passwort:</translation>
    </message>
    <message>
        <location line="+34"/>
        <source>The database server asks for a password.</source>
        <translation>Der Datenbankserver verlangt ein Passwort.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The server refused the password: %1</source>
        <translation>Der Server hat das Passwort abgelehnt: %1</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>No password was given for &quot;%1&quot;.</source>
        <translation>Für „%1“ wurde kein Passwort angegeben.</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Cannot connect to &quot;%1&quot;: %2</source>
        <translation>Keine Verbindung zu „%1“ möglich: %2</translation>
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
        <location filename="../../objectmodel/widgets/TZQueryBuilder.cpp" line="+60"/>
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
        <location line="+33"/>
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
    <name>TZRenderPanelClusterDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelClusterDiagram.ui" line="+14"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Color ramp</source>
        <translation>Farbverlauf</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Marker size:</source>
        <translation>Markergröße:</translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelClusterDiagram.cpp" line="+29"/>
        <source>Cluster diagram</source>
        <translation>Cluster-Diagramm</translation>
    </message>
</context>
<context>
    <name>TZRenderPanelDiagramBase</name>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelDiagramBase.cpp" line="+45"/>
        <source>Symbols</source>
        <translation>Symbole</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Field</source>
        <translation>Feld</translation>
    </message>
</context>
<context>
    <name>TZRenderPanelDotDensityDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelDotDensityDiagram.ui" line="+14"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Field</source>
        <translation>Feld</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Dot color</source>
        <translation>Punktfarbe</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Each dot represents the quantity</source>
        <translation>Jeder Punkt steht für die Menge</translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelDotDensityDiagram.cpp" line="+35"/>
        <source>Dot density diagram</source>
        <translation>Punktdichte-Diagramm</translation>
    </message>
    <message>
        <location line="+51"/>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Please select value type field</source>
        <translation>Bitte wählen Sie ein numerisches Feld aus</translation>
    </message>
</context>
<context>
    <name>TZRenderPanelFourColorTheorem</name>
    <message>
        <location filename="../../forms/TZRenderPanelFourColorTheorem.ui" line="+6"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Colors</source>
        <translation>Farben</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Color scheme</source>
        <translation>Farbschema</translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelFourColorTheorem.cpp" line="+36"/>
        <source>Four color themorem</source>
        <translation>Vierfarbensatz</translation>
    </message>
    <message>
        <location line="+28"/>
        <source>configuring colors...</source>
        <translation>Farben werden zugewiesen...</translation>
    </message>
    <message>
        <location line="+4"/>
        <location line="+6"/>
        <source>Error!</source>
        <translation>Fehler!</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The features of the layer could not be read.</source>
        <translation>Die Objekte des Layers konnten nicht gelesen werden.</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Failed to configure color,please increase the number of colors</source>
        <translation>Die Farben konnten nicht zugewiesen werden. Bitte erhöhen Sie die Anzahl der Farben</translation>
    </message>
</context>
<context>
    <name>TZRenderPanelGradingBase</name>
    <message>
        <location filename="../../panels/vector/TZRenderPanelGradingBase.cpp" line="+226"/>
        <location line="+121"/>
        <location line="+5"/>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <location line="-126"/>
        <source>No items selected!</source>
        <translation>Keine Einträge ausgewählt!</translation>
    </message>
    <message>
        <location line="+41"/>
        <source>Point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <location line="+80"/>
        <source>There is an incorrect grading item!</source>
        <translation>Eine Klasse ist fehlerhaft!</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>The ranges of the different grades intersect. Do you want to continue?</source>
        <translation>Die Wertebereiche der Klassen überschneiden sich. Möchten Sie fortfahren?</translation>
    </message>
</context>
<context>
    <name>TZRenderPanelGradingSymbol</name>
    <message>
        <location filename="../../forms/TZRenderPanelGradingSymbol.ui" line="+6"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Value field:</source>
        <translation>Wertfeld:</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Level:</source>
        <translation>Klassen:</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Color ramp:</source>
        <translation>Farbverlauf:</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Outline:</source>
        <translation>Umriss:</translation>
    </message>
    <message>
        <location line="+14"/>
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
        <location line="+19"/>
        <source>Add classes</source>
        <translation>Klassen hinzufügen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete classes</source>
        <translation>Klassen löschen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete all classes</source>
        <translation>Alle Klassen löschen</translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+7"/>
        <source>Classes keep the order they were made in</source>
        <translation>Die Klassen behalten die Reihenfolge, in der sie angelegt wurden</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Classify all values</source>
        <translation>Alle Werte klassifizieren</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Update</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Count the features passing the layer&apos;s filter</source>
        <translation>Die Objekte zählen, die den Filter des Layers erfüllen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Write the classes to a text file</source>
        <translation>Klassen in eine Textdatei schreiben</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Read the classes from a text file</source>
        <translation>Klassen aus einer Textdatei lesen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelGradingSymbol.cpp" line="+31"/>
        <source>Grading symbol</source>
        <translation>Abgestuftes Symbol</translation>
    </message>
</context>
<context>
    <name>TZRenderPanelGraduatedSymbolsDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelGraduatedSymbolsDiagram.ui" line="+6"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Value field:</source>
        <translation>Wertfeld:</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Level:</source>
        <translation>Klassen:</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Class colors</source>
        <translation>Klassenfarben</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Color ramp:</source>
        <translation>Farbverlauf:</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Template:</source>
        <translation>Vorlage:</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Choose the symbol the classes are made from</source>
        <translation>Das Symbol wählen, aus dem die Klassen gebildet werden</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Minimum size:</source>
        <translation>Minimale Größe:</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Maximum size:</source>
        <translation>Maximale Größe:</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Outline:</source>
        <translation>Umriss:</translation>
    </message>
    <message>
        <location line="+14"/>
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
        <location line="+19"/>
        <source>Add classes</source>
        <translation>Klassen hinzufügen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete classes</source>
        <translation>Klassen löschen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete all classes</source>
        <translation>Alle Klassen löschen</translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+7"/>
        <source>Classes keep the order they were made in</source>
        <translation>Die Klassen behalten die Reihenfolge, in der sie angelegt wurden</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Classify all values</source>
        <translation>Alle Werte klassifizieren</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Update</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Count the features passing the layer&apos;s filter</source>
        <translation>Die Objekte zählen, die den Filter des Layers erfüllen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Write the classes to a text file</source>
        <translation>Klassen in eine Textdatei schreiben</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Read the classes from a text file</source>
        <translation>Klassen aus einer Textdatei lesen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelGraduatedSymbolsDiagram.cpp" line="+56"/>
        <source>Graduated symbols</source>
        <translation>Abgestufte Symbolgrößen</translation>
    </message>
</context>
<context>
    <name>TZRenderPanelHistogramDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelHistogramDiagram.ui" line="+14"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Value field:</source>
        <translation>Wertfeld:</translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Color ramp:</source>
        <translation>Farbverlauf:</translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Item width:</source>
        <translation>Balkenbreite:</translation>
    </message>
    <message>
        <location line="+63"/>
        <location line="+67"/>
        <location filename="../../panels/diagram/TZRenderPanelHistogramDiagram.cpp" line="+64"/>
        <source>Point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <location line="-62"/>
        <location filename="../../panels/diagram/TZRenderPanelHistogramDiagram.cpp" line="+0"/>
        <source>MM</source>
        <translation>mm</translation>
    </message>
    <message>
        <location line="+5"/>
        <location filename="../../panels/diagram/TZRenderPanelHistogramDiagram.cpp" line="+0"/>
        <source>CM</source>
        <translation>cm</translation>
    </message>
    <message>
        <location line="+5"/>
        <location filename="../../panels/diagram/TZRenderPanelHistogramDiagram.cpp" line="+0"/>
        <source>Inch</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Max height:</source>
        <translation>Max. Höhe:</translation>
    </message>
    <message>
        <location line="+63"/>
        <source>Show data</source>
        <translation>Werte anzeigen</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Vertical</source>
        <translation>Vertikal</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Horizontal</source>
        <translation>Horizontal</translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelHistogramDiagram.cpp" line="+22"/>
        <source>Histogram Diagram</source>
        <translation>Balkendiagramm</translation>
    </message>
</context>
<context>
    <name>TZRenderPanelMatchToSymbolsInAStyle</name>
    <message>
        <location filename="../../forms/TZRenderPanelMatchToSymbolsInAStyle.ui" line="+6"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Value Field:</source>
        <translation>Wertfeld:</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Match to symbols in a style:</source>
        <translation>Mit Symbolen eines Stils abgleichen:</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>symbol priority</source>
        <translation>Symbolpriorität</translation>
    </message>
    <message>
        <location line="+14"/>
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
        <location line="+6"/>
        <source>More detail</source>
        <translation>Weitere Details</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelMatchToSymbolsInAStyle.cpp" line="+53"/>
        <source>Match to symbols in a style</source>
        <translation>Mit Symbolen eines Stils abgleichen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Symbols</source>
        <translation>Symbole</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Label</source>
        <translation>Legende</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Scale filter</source>
        <translation>Maßstabsfilter</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>MinScale</source>
        <translation>Min. Maßstab</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>MaxScale</source>
        <translation>Max. Maßstab</translation>
    </message>
    <message>
        <location line="+182"/>
        <location line="+10"/>
        <location line="+13"/>
        <location line="+23"/>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <location line="-46"/>
        <source>No matching values</source>
        <translation>Keine passenden Werte</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>No other values</source>
        <translation>Keine weiteren Werte</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>No items selected!</source>
        <translation>Keine Einträge ausgewählt!</translation>
    </message>
    <message>
        <location line="+24"/>
        <source>Style database: %1
Styles of this layer&apos;s kind: %2
Matched values: %3</source>
        <translation>Stildatenbank: %1
Stile für diese Layerart: %2
Zugeordnete Werte: %3</translation>
    </message>
</context>
<context>
    <name>TZRenderPanelPieDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelPieDiagram.ui" line="+14"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Value Field:</source>
        <translation>Wertfeld:</translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Color Ramp:</source>
        <translation>Farbverlauf:</translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Radius:</source>
        <translation>Radius:</translation>
    </message>
    <message>
        <location line="+50"/>
        <source>Point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Show Data</source>
        <translation>Werte anzeigen</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>3D Options</source>
        <translation>3D-Optionen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Show shadow</source>
        <translation>Schatten anzeigen</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Shadow thickness</source>
        <translation>Schattenstärke</translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelPieDiagram.cpp" line="+33"/>
        <source>Pie Diagram</source>
        <translation>Kreisdiagramm</translation>
    </message>
</context>
<context>
    <name>TZRenderPanelRuleBased</name>
    <message>
        <location filename="../../forms/TZRenderPanelRuleBased.ui" line="+14"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Add a rule</source>
        <translation>Regel hinzufügen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Delete the selected rules</source>
        <translation>Ausgewählte Regeln löschen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Move the selected rule up</source>
        <translation>Ausgewählte Regel nach oben verschieben</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Move the selected rule down</source>
        <translation>Ausgewählte Regel nach unten verschieben</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Rotate point symbols</source>
        <translation>Punktsymbole drehen</translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelRuleBased.cpp" line="+27"/>
        <source>Rule-based</source>
        <translation>Regelbasiert</translation>
    </message>
    <message>
        <location line="+65"/>
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
    <name>TZRenderPanelStackDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelStackDiagram.ui" line="+14"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Value field:</source>
        <translation>Wertfeld:</translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Color ramp:</source>
        <translation>Farbverlauf:</translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Item width:</source>
        <translation>Balkenbreite:</translation>
    </message>
    <message>
        <location line="+50"/>
        <source>Max height:</source>
        <translation>Max. Höhe:</translation>
    </message>
    <message>
        <location line="+50"/>
        <source>Show data</source>
        <translation>Werte anzeigen</translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelStackDiagram.cpp" line="+33"/>
        <source>Stack Diagram</source>
        <translation>Gestapeltes Balkendiagramm</translation>
    </message>
</context>
<context>
    <name>TZRenderPanelThermodynamicDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelThermodynamicDiagram.ui" line="+20"/>
        <source>Thermodynamic Diagram</source>
        <translation>Heatmap</translation>
    </message>
    <message>
        <location line="+15"/>
        <source>Color ramp:</source>
        <translation>Farbverlauf:</translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Radius:</source>
        <translation>Radius:</translation>
    </message>
    <message>
        <location line="+59"/>
        <source>Blur:</source>
        <translation>Weichzeichnung:</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Zero  mean to automatically</source>
        <translation>0 bedeutet automatisch</translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelThermodynamicDiagram.cpp" line="+15"/>
        <source>Point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+3"/>
        <location line="+60"/>
        <source>MM</source>
        <translation>mm</translation>
    </message>
    <message>
        <location line="-62"/>
        <source>CM</source>
        <translation>cm</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Inch</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Heatmap</source>
        <translation>Heatmap</translation>
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
        <location filename="../../panels/vector/TZRenderPanelUniqueValues.cpp" line="+328"/>
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
        <location filename="../../panels/vector/TZRenderPanelUniqueValues.cpp" line="-271"/>
        <source>Unique Values</source>
        <translation>Eindeutige Werte</translation>
    </message>
    <message>
        <location line="+187"/>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>No items selected!</source>
        <translation>Keine Einträge ausgewählt!</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The layer has no field &quot;%1&quot; that its unique values render classifies by. Its categories are shown but are not applied to another field: choose a field and add its values.</source>
        <translation>Der Layer hat kein Feld „%1“, nach dem seine Darstellung mit eindeutigen Werten klassifiziert. Die Kategorien werden angezeigt, aber nicht auf ein anderes Feld übertragen: Wählen Sie ein Feld und fügen Sie dessen Werte hinzu.</translation>
    </message>
</context>
<context>
    <name>TZRenderPanelUniqueValuesByManyFields</name>
    <message>
        <location filename="../../forms/TZRenderPanelUniqueValuesByManyFields.ui" line="+6"/>
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
        <location filename="../../panels/vector/TZRenderPanelUniqueValuesByManyFields.cpp" line="+319"/>
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
        <location filename="../../panels/vector/TZRenderPanelUniqueValuesByManyFields.cpp" line="-250"/>
        <source>Unique Values,Many Fields</source>
        <translation>Eindeutige Werte, mehrere Felder</translation>
    </message>
    <message>
        <location line="+195"/>
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
    <name>TZRuleBasedDialog</name>
    <message>
        <location filename="../../forms/TZRuleBasedDialog.ui" line="+14"/>
        <source>Rule setting</source>
        <translation>Regeleinstellungen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Style</source>
        <translation>Stil</translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Choose the symbol</source>
        <translation>Symbol auswählen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>..</source>
        <translation>..</translation>
    </message>
    <message>
        <location line="+25"/>
        <source>Label</source>
        <translation>Legende</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Every feature</source>
        <translation>Alle Objekte</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Build the filter in the query builder</source>
        <translation>Filter im Abfrageeditor erstellen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Scale filter</source>
        <translation>Maßstabsfilter</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Minimum scale</source>
        <translation>Minimaler Maßstab</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Scale denominator as a whole number, e.g. 1000000 for 1:1,000,000</source>
        <translation>Maßstabszahl als ganze Zahl, z. B. 1000000 für 1:1.000.000</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Maximum scale</source>
        <translation>Maximaler Maßstab</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Scale denominator as a whole number, e.g. 1000 for 1:1,000</source>
        <translation>Maßstabszahl als ganze Zahl, z. B. 1000 für 1:1.000</translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRuleBasedDialog.cpp" line="+78"/>
        <source>No symbol</source>
        <translation>Kein Symbol</translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Symbol can not be null</source>
        <translation>Es muss ein Symbol gewählt sein</translation>
    </message>
</context>
<context>
    <name>TZRuleBasedModel</name>
    <message>
        <location filename="../../panels/vector/TZRuleBasedModel.cpp" line="+101"/>
        <source>Symbols</source>
        <translation>Symbole</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Label</source>
        <translation>Legende</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Rule</source>
        <translation>Regel</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Scale filter</source>
        <translation>Maßstabsfilter</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Minimum scale</source>
        <translation>Minimaler Maßstab</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Maximum scale</source>
        <translation>Maximaler Maßstab</translation>
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
        <location filename="../../objectmodel/widgets/TZWaitDialog.cpp" line="+42"/>
        <source>The task stopped with an unknown error.</source>
        <translation>Die Aufgabe wurde mit einem unbekannten Fehler abgebrochen.</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>The task failed.</source>
        <translation>Die Aufgabe ist fehlgeschlagen.</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>TzImageRenderClassDialog</name>
    <message>
        <location filename="../../forms/TzImageRenderClassDialog.ui" line="+14"/>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Classes</source>
        <translation>Klassen</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Display Nodata as</source>
        <translation>NoData anzeigen als</translation>
    </message>
    <message>
        <location filename="../../panels/raster/TzImageRenderClassDialog.cpp" line="+39"/>
        <source>Image Class</source>
        <translation>Bild: Klassen</translation>
    </message>
    <message>
        <location line="+131"/>
        <location line="+8"/>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <location line="-8"/>
        <source>Data is not standard!</source>
        <translation>Die Daten sind ungültig!</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Data is out of bound!</source>
        <translation>Die Daten liegen außerhalb des gültigen Bereichs!</translation>
    </message>
</context>
<context>
    <name>TzImageRenderColormapDialog</name>
    <message>
        <location filename="../../forms/TzImageRenderColormapDialog.ui" line="+14"/>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Display Nodata as</source>
        <translation>NoData anzeigen als</translation>
    </message>
    <message>
        <location filename="../../panels/raster/TzImageRenderColormapDialog.cpp" line="+33"/>
        <source>Image Colormap</source>
        <translation>Bild: Farbtabelle</translation>
    </message>
</context>
<context>
    <name>TzImageRenderStretchDialog</name>
    <message>
        <location filename="../../forms/TzImageRenderStretchDialog.ui" line="+6"/>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Stretch Method&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Streckungsmethode&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Color&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Farbe&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Min Value&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Minimalwert&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Max Value&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Maximalwert&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Standard Value&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Standardabweichungen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>2.5</source>
        <translation>2.5</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Left Stretch Value&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Linker Streckungswert&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+7"/>
        <location line="+14"/>
        <source>0.5</source>
        <translation>0.5</translation>
    </message>
    <message>
        <location line="-7"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Right Stretch Value&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Rechter Streckungswert&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Display Nodata as&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;NoData anzeigen als&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Histogram</source>
        <translation>Histogramm</translation>
    </message>
    <message>
        <location filename="../../panels/raster/TzImageRenderStretchDialog.cpp" line="+49"/>
        <location line="+71"/>
        <source>Min And Max Value Stretch</source>
        <translation>Min-Max-Streckung</translation>
    </message>
    <message>
        <location line="-70"/>
        <source>Standard Deviation Stretch</source>
        <translation>Standardabweichungs-Streckung</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Percent Clip Stretch</source>
        <translation>Prozent-Clip-Streckung</translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Image Stretch</source>
        <translation>Bild: Streckung</translation>
    </message>
    <message>
        <location line="+111"/>
        <source>Reading the band...</source>
        <translation>Band wird gelesen...</translation>
    </message>
</context>
<context>
    <name>TzImageRenderTableDialog</name>
    <message>
        <location filename="../../panels/raster/TzImageRenderTableDialog.cpp" line="+106"/>
        <source>Reading the raster...</source>
        <translation>Raster wird gelesen...</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The raster cannot be shown this way: %1</source>
        <translation>Das Raster kann so nicht dargestellt werden: %1</translation>
    </message>
</context>
<context>
    <name>TzImageRenderUniqueDialog</name>
    <message>
        <location filename="../../forms/TzImageRenderUniqueDialog.ui" line="+14"/>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Display Nodata as</source>
        <translation>NoData anzeigen als</translation>
    </message>
    <message>
        <location filename="../../panels/raster/TzImageRenderUniqueDialog.cpp" line="+38"/>
        <source>Image Unique</source>
        <translation>Bild: Eindeutige Werte</translation>
    </message>
    <message>
        <location line="+38"/>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>This data big, get unique data is slowly,would you like to continus?</source>
        <translation>Die Datenmenge ist groß, das Ermitteln der eindeutigen Werte kann lange dauern. Möchten Sie fortfahren?</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The band has more than %1 distinct values. The scan stopped there, so the table is incomplete: values not listed are not drawn.</source>
        <translation>Das Band hat mehr als %1 verschiedene Werte. Die Suche wurde dort beendet, daher ist die Tabelle unvollständig: Nicht aufgeführte Werte werden nicht gezeichnet.</translation>
    </message>
</context>
<context>
    <name>TzImgRenderMultiStretchDialog</name>
    <message>
        <location filename="../../forms/TzImgRenderMultiStretchDialog.ui" line="+6"/>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Band&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Band&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Min&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Min.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Max&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Max.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Display Background as&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Hintergrund anzeigen als&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Display Nodata as&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;NoData anzeigen als&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location filename="../../panels/raster/TzImgRenderMultiStretchDialog.cpp" line="+35"/>
        <source>Image Stretch</source>
        <translation>Bild: Streckung</translation>
    </message>
</context>
<context>
    <name>TzImgRenderRGBCompositeDialog</name>
    <message>
        <location filename="../../forms/TzImgRenderRGBCompositeDialog.ui" line="+6"/>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Min&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Min.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Max&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Max.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Mean&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Mittelwert&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Std Dev&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Std.-Abw.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Red&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Rot&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Green&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Grün&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Blue&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Blau&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Display Background as&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Hintergrund anzeigen als&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Display Nodata as&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;NoData anzeigen als&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Stretch</source>
        <translation>Streckung</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Type:&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Typ:&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;min:&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Min.:&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+2"/>
        <source>0.5</source>
        <translation>0.5</translation>
    </message>
    <message>
        <location line="-1"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;max:&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Max.:&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Histogram</source>
        <translation>Histogramm</translation>
    </message>
    <message>
        <location filename="../../panels/raster/TzImgRenderRGBCompositeDialog.cpp" line="+38"/>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Percent Clip</source>
        <translation>Prozent-Clip</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Image RGBComposite</source>
        <translation>Bild: RGB-Komposit</translation>
    </message>
    <message>
        <location line="+77"/>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Alpha</source>
        <translation>Alpha</translation>
    </message>
</context>
<context>
    <name>TzModelBandCheckList</name>
    <message>
        <location filename="../../panels/raster/TzModelBandCheckList.cpp" line="+78"/>
        <source>Channel</source>
        <translation>Kanal</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Band</source>
        <translation>Band</translation>
    </message>
</context>
<context>
    <name>TzRasterBandReader</name>
    <message>
        <location filename="../../panels/raster/TzRasterBandReader.cpp" line="+27"/>
        <source>Computing the statistics of band %1...</source>
        <translation>Statistik von Band %1 wird berechnet...</translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Computing the band histograms...</source>
        <translation>Histogramme der Bänder werden berechnet...</translation>
    </message>
</context>
<context>
    <name>TzSlotGuard</name>
    <message>
        <location filename="../../panels/raster/TzSlotGuard.h" line="+21"/>
        <source>Unknown error</source>
        <translation>Unbekannter Fehler</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Error!</source>
        <translation>Fehler!</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <location filename="../../app/main.cpp" line="+55"/>
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
