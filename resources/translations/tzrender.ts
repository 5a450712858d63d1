<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1">
<context>
    <name>QObject</name>
    <message>
        <location filename="../../app/TZRasterLayerDrawer.cpp" line="+168"/>
        <source>Band %1 returned fewer pixels than asked for.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-44"/>
        <source>The raster has no usable geo-transform.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelRuleBased.cpp" line="+41"/>
        <source>Unknown error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Error!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZColorBtn</name>
    <message>
        <location filename="../../objectmodel/widgets/TZColorBtn.cpp" line="+19"/>
        <location line="+2"/>
        <location line="+14"/>
        <source>No color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Select color</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZColorMenu</name>
    <message>
        <location filename="../../objectmodel/widgets/TZColorMenu.cpp" line="+63"/>
        <source>More colors...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Select color</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZColorSchemeComboBox</name>
    <message>
        <location filename="../../objectmodel/widgets/TZColorSchemeComboBox.cpp" line="+125"/>
        <location line="+13"/>
        <source>Custom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-3"/>
        <source>Current</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZControlRender</name>
    <message>
        <location filename="../../forms/TZControlRender.ui" line="+29"/>
        <source>Symbol rendering</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+46"/>
        <source>Layer name :</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Rendering style :</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+21"/>
        <source>No-render</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Don&apos;t render</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../render/TZControlRender.cpp" line="+93"/>
        <source>Apply</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Reset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+40"/>
        <location line="+87"/>
        <source>Not to render</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZDialogAddValueToUniqueValue</name>
    <message>
        <location filename="../../forms/TZDialogAddValueToUniqueValue.ui" line="+14"/>
        <source>Add value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Select values to add:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+20"/>
        <source>New value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>You can add values to the list above</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+25"/>
        <source>&amp;Ok</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>&amp;Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZDialogBandPixHistogram</name>
    <message>
        <location filename="../../forms/TZDialogBandPixHistogram.ui" line="+14"/>
        <source>Band Pixel Histogram</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Statistics Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <location filename="../../panels/raster/TZDialogBandPixHistogram.cpp" line="+145"/>
        <source>Min Value:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <location filename="../../panels/raster/TZDialogBandPixHistogram.cpp" line="+1"/>
        <source>Max Value:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <location filename="../../panels/raster/TZDialogBandPixHistogram.cpp" line="+1"/>
        <source>Average Value:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <location filename="../../panels/raster/TZDialogBandPixHistogram.cpp" line="+1"/>
        <source>Standard Deviation:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <location filename="../../panels/raster/TZDialogBandPixHistogram.cpp" line="+2"/>
        <location line="+19"/>
        <source>Value:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <location filename="../../panels/raster/TZDialogBandPixHistogram.cpp" line="-20"/>
        <location line="+19"/>
        <source>Statistical Data:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZDialogRotateByField</name>
    <message>
        <location filename="../../forms/TZDialogRotateByField.ui" line="+26"/>
        <source>Rotate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Rotate Points by Angle in this  field:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Rotation Style:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+43"/>
        <source>Geographic</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+44"/>
        <source>Arithmetic</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Random</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Min:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Max:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZDialogRotateByField.cpp" line="+25"/>
        <source>Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Bad layer type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <location line="+33"/>
        <source>&lt;none&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-32"/>
        <location line="+21"/>
        <source>&lt;random&gt;</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZFeatureLayerDrawer</name>
    <message>
        <location filename="../../app/TZFeatureLayerDrawer.cpp" line="+307"/>
        <source>The %1 render could not draw the layer.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZLayerOpener</name>
    <message>
        <location filename="../../app/TZLayerOpener.cpp" line="+56"/>
        <source>GDAL cannot read &quot;%1&quot;: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-19"/>
        <location line="+56"/>
        <source>&quot;%1&quot; was not found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-35"/>
        <source>&quot;%1&quot; is not a vector or raster source GDAL can read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+25"/>
        <source>&quot;%1&quot; holds no layer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+26"/>
        <source>Unknown layer kind &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZLayerTree</name>
    <message>
        <location filename="../../app/TZLayerLegend.cpp" line="+41"/>
        <source>Not rendered</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+86"/>
        <source>1 dot = %1 %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Density: sparse to dense</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+42"/>
        <source>Uncolored</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZLayerTreeModel</name>
    <message>
        <location filename="../../app/TZLayerTreeModel.cpp" line="+344"/>
        <source>%1 (%2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>%1 — %L2 classes</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZMapProject</name>
    <message>
        <location filename="../../app/TZMapProject.cpp" line="+171"/>
        <source>The symbology of &quot;%1&quot; is not a render object. It is drawn with its default symbology.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-5"/>
        <source>The symbology of &quot;%1&quot; could not be read: %2. It is drawn with its default symbology.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-55"/>
        <source>Cannot write &quot;%1&quot;: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Cannot read &quot;%1&quot;: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>&quot;%1&quot; is not a tzmap project.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>&quot;%1&quot; was written by a newer tzmap.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Layer &quot;%1&quot; was left out: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZMapRenderJob</name>
    <message>
        <location filename="../../app/TZMapRenderJob.cpp" line="+58"/>
        <location line="+4"/>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZMapWindow</name>
    <message>
        <location filename="../../app/TZMapWindow.cpp" line="+68"/>
        <source>Layers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+46"/>
        <source>&amp;Open Data...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Add vector or raster layers from files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Open Raster &amp;Folder...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Add a folder of rasters as one mosaic layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Open Data &amp;Source...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Add layers from a data source name, such as a PostGIS connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Add &amp;PostGIS Layer...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Connect to a PostGIS database and add some of its spatial tables</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Open &amp;Project...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>&amp;Save Project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Save Project &amp;As...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Zoom &amp;In</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Zoom &amp;Out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Zoom to &amp;All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Zoom to &amp;Layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&amp;Refresh</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>&amp;Symbology...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Show the symbol rendering of the selected layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&amp;Remove Layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>&amp;About tzmap</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>&amp;Layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+58"/>
        <location line="+130"/>
        <source>Opening the data...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-108"/>
        <location line="+17"/>
        <location line="+33"/>
        <location line="+73"/>
        <source>Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-110"/>
        <source>Opening the project...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Saving the project...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+28"/>
        <source>Open Data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Open Raster Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Open Data Source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Data source (a path, or a connection such as PG:dbname=gis):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+40"/>
        <source>Open Project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Save Project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+44"/>
        <source>About tzmap</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;h3&gt;tzmap&lt;/h3&gt;&lt;p&gt;The reference desktop host of the TZRender symbology library: open vector and raster data, choose how each layer is drawn in the &lt;i&gt;Symbol rendering&lt;/i&gt; dock, and save the result as a project.&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+32"/>
        <source>Scale 1:%L1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>X %L1  Y %L2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+34"/>
        <source>Not every layer could be drawn: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Untitled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>%1[*] - tzmap</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>tzmap</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>The project has unsaved changes.
Do you want to save them?</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZModelColorList</name>
    <message>
        <location filename="../../panels/raster/TZModelColorList.cpp" line="+53"/>
        <source>Color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZModelGradingSymbol</name>
    <message>
        <location filename="../../panels/vector/TZModelGradingSymbol.cpp" line="+211"/>
        <source>symbols</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Label</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Count</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+216"/>
        <location line="+1"/>
        <source>Wait</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+161"/>
        <location line="+23"/>
        <location line="+23"/>
        <location line="+11"/>
        <location line="+20"/>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-77"/>
        <source>No other values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+24"/>
        <source>The number of currently obtained grading symbol items is greater than the level set!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+22"/>
        <location line="+11"/>
        <source>Export file failed!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Export file successful!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Open file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <location line="+15"/>
        <source>Values(*.txt)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-4"/>
        <source>Please add the grading symbol item first!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Export file</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZModelMatchToSymbols</name>
    <message>
        <location filename="../../panels/vector/TZModelMatchToSymbols.cpp" line="+89"/>
        <location line="+1"/>
        <source>Wait</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+93"/>
        <source>Scale filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>MinScale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>MaxScale</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZModelUniqueValues</name>
    <message>
        <location filename="../../panels/vector/TZModelUniqueValues.cpp" line="+158"/>
        <source>Symbols</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Label</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Count</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+397"/>
        <location line="+1"/>
        <source>Wait</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZModelUniqueValuesByManyFields</name>
    <message>
        <location filename="../../panels/vector/TZModelUniqueValuesByManyFields.cpp" line="+44"/>
        <source>warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>This data big, get unique data is slowly,would you like to continus?</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZPostgisCatalog</name>
    <message>
        <location filename="../../app/TZPostgisCatalog.cpp" line="+45"/>
        <source>The server asks for a password: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Cannot connect: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>The database has no PostGIS extension (it has no geometry_columns).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Cannot list the tables: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZPostgisDialog</name>
    <message>
        <location filename="../../forms/TZPostgisDialog.ui" line="+14"/>
        <source>Add PostGIS Layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>&amp;Service:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>A service of your PostgreSQL service file (~/.pg_service.conf); the fields below add to or override it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>&amp;Host or socket folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>localhost, db.example.org or /var/run/postgresql</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>&amp;Port:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>5432</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>&amp;Database:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>&amp;User:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Pass&amp;word:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>empty: from ~/.pgpass, or asked for when needed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>&amp;Connect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+31"/>
        <source>Spatial &amp;tables and views (choose one or more):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Table</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Kind</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Geometry column</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>SRID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../app/TZPostgisDialog.cpp" line="+27"/>
        <source>&amp;Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>The server did not answer within %1 seconds.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+60"/>
        <source>Connecting...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+30"/>
        <source>view</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>table</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Connected. The database has no spatial tables or views.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Connected: 1 spatial table or view.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Connected: %1 spatial tables and views.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZPostgisLogin</name>
    <message>
        <location filename="../../app/TZPostgisLogin.cpp" line="+70"/>
        <source>PostGIS Password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>%1
%2

Password:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+34"/>
        <source>The database server asks for a password.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The server refused the password: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>No password was given for &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Cannot connect to &quot;%1&quot;: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZQueryBuilder</name>
    <message>
        <location filename="../../forms/TZQueryBuilder.ui" line="+9"/>
        <source>Query builder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Fields</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Sample</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Operators</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>=</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>LIKE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>%</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>IN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;=</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&gt;=</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>AND</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>OR</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>NOT</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>IS NULL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>(</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>SELECT * FROM layer WHERE:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../objectmodel/widgets/TZQueryBuilder.cpp" line="+60"/>
        <source>Query builder - %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+53"/>
        <source>There is no layer to query.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+32"/>
        <source>Counting features...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+33"/>
        <location line="+83"/>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-83"/>
        <source>The expression is not valid:
%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+56"/>
        <source>Reading values...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+28"/>
        <source>The values of %1 could not be read:
%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>The expression is not valid: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <location line="+2"/>
        <source>The expression selects %n feature(s).</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TZRenderPanelClusterDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelClusterDiagram.ui" line="+14"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Color ramp</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Marker size:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelClusterDiagram.cpp" line="+29"/>
        <source>Cluster diagram</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelDiagramBase</name>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelDiagramBase.cpp" line="+45"/>
        <source>Symbols</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Field</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelDotDensityDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelDotDensityDiagram.ui" line="+14"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Dot color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Each dot represents the quantity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelDotDensityDiagram.cpp" line="+35"/>
        <source>Dot density diagram</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+51"/>
        <source>Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Please select value type field</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelFourColorTheorem</name>
    <message>
        <location filename="../../forms/TZRenderPanelFourColorTheorem.ui" line="+6"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Colors</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Color scheme</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelFourColorTheorem.cpp" line="+36"/>
        <source>Four color themorem</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+28"/>
        <source>configuring colors...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <location line="+6"/>
        <source>Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The features of the layer could not be read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Failed to configure color,please increase the number of colors</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelGradingBase</name>
    <message>
        <location filename="../../panels/vector/TZRenderPanelGradingBase.cpp" line="+226"/>
        <location line="+121"/>
        <location line="+5"/>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-126"/>
        <source>No items selected!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+41"/>
        <source>Point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+80"/>
        <source>There is an incorrect grading item!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>The ranges of the different grades intersect. Do you want to continue?</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelGradingSymbol</name>
    <message>
        <location filename="../../forms/TZRenderPanelGradingSymbol.ui" line="+6"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Value field:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Level:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Color ramp:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Outline:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>MM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>CM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Inch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Add classes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete classes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete all classes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+7"/>
        <source>Classes keep the order they were made in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Classify all values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Count the features passing the layer&apos;s filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Write the classes to a text file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Read the classes from a text file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelGradingSymbol.cpp" line="+31"/>
        <source>Grading symbol</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelGraduatedSymbolsDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelGraduatedSymbolsDiagram.ui" line="+6"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Value field:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Level:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Class colors</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Color ramp:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Template:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Choose the symbol the classes are made from</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Minimum size:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Maximum size:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Outline:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>MM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>CM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Inch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Add classes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete classes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete all classes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+7"/>
        <source>Classes keep the order they were made in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Classify all values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Count the features passing the layer&apos;s filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Write the classes to a text file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Read the classes from a text file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelGraduatedSymbolsDiagram.cpp" line="+56"/>
        <source>Graduated symbols</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelHistogramDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelHistogramDiagram.ui" line="+14"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Value field:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Color ramp:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Item width:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+63"/>
        <location line="+67"/>
        <location filename="../../panels/diagram/TZRenderPanelHistogramDiagram.cpp" line="+64"/>
        <source>Point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-62"/>
        <location filename="../../panels/diagram/TZRenderPanelHistogramDiagram.cpp" line="+0"/>
        <source>MM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <location filename="../../panels/diagram/TZRenderPanelHistogramDiagram.cpp" line="+0"/>
        <source>CM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <location filename="../../panels/diagram/TZRenderPanelHistogramDiagram.cpp" line="+0"/>
        <source>Inch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Max height:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+63"/>
        <source>Show data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Vertical</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Horizontal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelHistogramDiagram.cpp" line="+22"/>
        <source>Histogram Diagram</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelMatchToSymbolsInAStyle</name>
    <message>
        <location filename="../../forms/TZRenderPanelMatchToSymbolsInAStyle.ui" line="+6"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Value Field:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Match to symbols in a style:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>symbol priority</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Add all values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Add values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete all values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>More detail</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelMatchToSymbolsInAStyle.cpp" line="+53"/>
        <source>Match to symbols in a style</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Symbols</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Label</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Scale filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>MinScale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>MaxScale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+182"/>
        <location line="+10"/>
        <location line="+13"/>
        <location line="+23"/>
        <source>Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-46"/>
        <source>No matching values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>No other values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>No items selected!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+24"/>
        <source>Style database: %1
Styles of this layer&apos;s kind: %2
Matched values: %3</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelPieDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelPieDiagram.ui" line="+14"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Value Field:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Color Ramp:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Radius:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+50"/>
        <source>Point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Show Data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>3D Options</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Show shadow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Shadow thickness</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelPieDiagram.cpp" line="+33"/>
        <source>Pie Diagram</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelRuleBased</name>
    <message>
        <location filename="../../forms/TZRenderPanelRuleBased.ui" line="+14"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Add a rule</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Delete the selected rules</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Move the selected rule up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Move the selected rule down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Rotate point symbols</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelRuleBased.cpp" line="+27"/>
        <source>Rule-based</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+65"/>
        <source>Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>No items selected!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelSingleSymbol</name>
    <message>
        <location filename="../../forms/TZRenderPanelSingleSymbol.ui" line="+14"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+26"/>
        <source>...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+37"/>
        <source>Symbol priority</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Label:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelSingleSymbol.cpp" line="+72"/>
        <source>Single symbol</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+109"/>
        <source>Symbol</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Symbol name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>-1-</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelStackDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelStackDiagram.ui" line="+14"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Value field:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Color ramp:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Item width:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+50"/>
        <source>Max height:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+50"/>
        <source>Show data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelStackDiagram.cpp" line="+33"/>
        <source>Stack Diagram</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelThermodynamicDiagram</name>
    <message>
        <location filename="../../forms/TZRenderPanelThermodynamicDiagram.ui" line="+20"/>
        <source>Thermodynamic Diagram</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+15"/>
        <source>Color ramp:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Radius:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+59"/>
        <source>Blur:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Zero  mean to automatically</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/diagram/TZRenderPanelThermodynamicDiagram.cpp" line="+15"/>
        <source>Point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+3"/>
        <location line="+60"/>
        <source>MM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-62"/>
        <source>CM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Inch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Heatmap</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelUniqueValues</name>
    <message>
        <location filename="../../forms/TZRenderPanelUniqueValues.ui" line="+6"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Value Field:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Color Ramp:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>OutLine:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+15"/>
        <location filename="../../panels/vector/TZRenderPanelUniqueValues.cpp" line="+328"/>
        <source>Point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>MM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>CM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Inch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Default outline style</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>symbol priority</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>show count(may take times)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Add all values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Add values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete all values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelUniqueValues.cpp" line="-271"/>
        <source>Unique Values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+187"/>
        <source>Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>No items selected!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The layer has no field &quot;%1&quot; that its unique values render classifies by. Its categories are shown but are not applied to another field: choose a field and add its values.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRenderPanelUniqueValuesByManyFields</name>
    <message>
        <location filename="../../forms/TZRenderPanelUniqueValuesByManyFields.ui" line="+6"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Value Field:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Color Ramp:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>OutLine:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+15"/>
        <location filename="../../panels/vector/TZRenderPanelUniqueValuesByManyFields.cpp" line="+319"/>
        <source>Point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>MM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>CM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Inch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Default outline style</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>symbol priority</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Add all values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Add values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Delete all values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRenderPanelUniqueValuesByManyFields.cpp" line="-250"/>
        <source>Unique Values,Many Fields</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+195"/>
        <source>Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>No items selected!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRuleBasedDialog</name>
    <message>
        <location filename="../../forms/TZRuleBasedDialog.ui" line="+14"/>
        <source>Rule setting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Style</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Choose the symbol</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>..</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+25"/>
        <source>Label</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Every feature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Build the filter in the query builder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Scale filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Minimum scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Scale denominator as a whole number, e.g. 1000000 for 1:1,000,000</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Maximum scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Scale denominator as a whole number, e.g. 1000 for 1:1,000</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/vector/TZRuleBasedDialog.cpp" line="+78"/>
        <source>No symbol</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Symbol can not be null</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZRuleBasedModel</name>
    <message>
        <location filename="../../panels/vector/TZRuleBasedModel.cpp" line="+101"/>
        <source>Symbols</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Label</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Rule</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Scale filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Minimum scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Maximum scale</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZSetupDialogDefautOutLineStyle</name>
    <message>
        <location filename="../../forms/TZSetupDialogDefautOutLineStyle.ui" line="+14"/>
        <source>Setup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Default outline style:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Width:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Unit:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>MM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>CM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Inch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Color:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+27"/>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZStyleSelectorDialog</name>
    <message>
        <location filename="../../forms/TZStyleSelectorDialog.ui" line="+9"/>
        <source>Select symbol</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Style database:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+42"/>
        <source>Adjust</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Color:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <location filename="../../objectmodel/widgets/TZStyleSelectorDialog.cpp" line="+135"/>
        <source>Size:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Outline color:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Outline width:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Angle:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>°</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../objectmodel/widgets/TZStyleSelectorDialog.cpp" line="-86"/>
        <source>All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+86"/>
        <source>Width:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+66"/>
        <source>Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Please choose a symbol.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Error!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TZWaitDialog</name>
    <message>
        <location filename="../../forms/TZWaitDialog.ui" line="+20"/>
        <source>Please wait</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../objectmodel/widgets/TZWaitDialog.cpp" line="+42"/>
        <source>The task stopped with an unknown error.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>The task failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TzImageRenderClassDialog</name>
    <message>
        <location filename="../../forms/TzImageRenderClassDialog.ui" line="+14"/>
        <source>Dialog</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Classes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Display Nodata as</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/raster/TzImageRenderClassDialog.cpp" line="+39"/>
        <source>Image Class</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+131"/>
        <location line="+8"/>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-8"/>
        <source>Data is not standard!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Data is out of bound!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TzImageRenderColormapDialog</name>
    <message>
        <location filename="../../forms/TzImageRenderColormapDialog.ui" line="+14"/>
        <source>Dialog</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Display Nodata as</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/raster/TzImageRenderColormapDialog.cpp" line="+33"/>
        <source>Image Colormap</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TzImageRenderStretchDialog</name>
    <message>
        <location filename="../../forms/TzImageRenderStretchDialog.ui" line="+6"/>
        <source>Dialog</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Stretch Method&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Color&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Min Value&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Max Value&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Standard Value&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>2.5</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Left Stretch Value&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <location line="+14"/>
        <source>0.5</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-7"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Right Stretch Value&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Display Nodata as&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Histogram</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/raster/TzImageRenderStretchDialog.cpp" line="+49"/>
        <location line="+71"/>
        <source>Min And Max Value Stretch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-70"/>
        <source>Standard Deviation Stretch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Percent Clip Stretch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Image Stretch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+111"/>
        <source>Reading the band...</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TzImageRenderTableDialog</name>
    <message>
        <location filename="../../panels/raster/TzImageRenderTableDialog.cpp" line="+106"/>
        <source>Reading the raster...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The raster cannot be shown this way: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TzImageRenderUniqueDialog</name>
    <message>
        <location filename="../../forms/TzImageRenderUniqueDialog.ui" line="+14"/>
        <source>Dialog</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Display Nodata as</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/raster/TzImageRenderUniqueDialog.cpp" line="+38"/>
        <source>Image Unique</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+38"/>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>This data big, get unique data is slowly,would you like to continus?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The band has more than %1 distinct values. The scan stopped there, so the table is incomplete: values not listed are not drawn.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TzImgRenderMultiStretchDialog</name>
    <message>
        <location filename="../../forms/TzImgRenderMultiStretchDialog.ui" line="+6"/>
        <source>Dialog</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Band&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Min&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Max&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Display Background as&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Display Nodata as&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/raster/TzImgRenderMultiStretchDialog.cpp" line="+35"/>
        <source>Image Stretch</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TzImgRenderRGBCompositeDialog</name>
    <message>
        <location filename="../../forms/TzImgRenderRGBCompositeDialog.ui" line="+6"/>
        <source>Dialog</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Statistics</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Min&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Max&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Mean&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Std Dev&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Red&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Green&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Blue&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Display Background as&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Display Nodata as&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Stretch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Type:&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;min:&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+2"/>
        <source>0.5</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-1"/>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;max:&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Histogram</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../../panels/raster/TzImgRenderRGBCompositeDialog.cpp" line="+38"/>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Percent Clip</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Image RGBComposite</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+77"/>
        <source>Red</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Green</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Blue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Alpha</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TzModelBandCheckList</name>
    <message>
        <location filename="../../panels/raster/TzModelBandCheckList.cpp" line="+78"/>
        <source>Channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Band</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TzRasterBandReader</name>
    <message>
        <location filename="../../panels/raster/TzRasterBandReader.cpp" line="+27"/>
        <source>Computing the statistics of band %1...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Computing the band histograms...</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TzSlotGuard</name>
    <message>
        <location filename="../../panels/raster/TzSlotGuard.h" line="+21"/>
        <source>Unknown error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Error!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <location filename="../../app/main.cpp" line="+55"/>
        <source>Desktop map viewer and symbology editor.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Draw the window, save it as a PNG image and exit.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Select the named layer and show its symbology.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Data sources, raster folders or a .tzmap project.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
