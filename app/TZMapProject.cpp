#include "TZMapProject.h"

#include "TZLayerOpener.h"

#include "data/TEFeatureLayer.h"
#include "data/TEPostgresSource.h"
#include "data/TERasterDirLayer.h"
#include "data/TERasterLayer.h"
#include "renders/TEFileFunc.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

using namespace TZObjects;

namespace {

// Version 2: a null render means the layer has none ("Not to render"). In
// version 1 it meant the layer had not been given one yet, so such a layer
// opens with its default render, as a layer without a render member does.
// Version 3: written without indentation, and categorized renders keep
// their categories as columns with a table of shared styles, which version
// 2 readers would silently drop; earlier files still open.
constexpr int FormatVersion = 3;

// Sets a render read from JSON on a layer of any kind.
bool applyRender(TELayer* layer, const QJsonObject& json, QString* error)
{
    TEString readError;
    if (auto* features = dynamic_cast<TEFeatureLayer*>(layer)) {
        TERefPtr<TEFeatureRender> render = TEFileFunc::OpenFeatureRender(json, &readError);
        if (render)
            features->SetSymbolRender(render);
        *error = readError.toQString();
        return bool(render);
    }
    TERefPtr<TEImageRender> render = TEFileFunc::OpenImageRender(json, &readError);
    if (!render) {
        *error = readError.toQString();
        return false;
    }
    // A band the raster lacks (a hand-edited project, or a file replaced by
    // one with fewer bands) keeps the layer's default render.
    auto* raster = dynamic_cast<TERasterLayer*>(layer);
    auto* mosaic = dynamic_cast<TERasterDirLayer*>(layer);
    const TERefPtr<TERasterProps> props = raster ? raster->GetRaster() : mosaic ? mosaic->GetRaster() : TERefPtr<TERasterProps>();
    const int bandCount = props ? props->GetBandCount() : 0;
    if (!render->CheckBands(bandCount, &readError)) {
        *error = readError.toQString();
        return false;
    }
    if (raster)
        raster->SetRender(render);
    else if (mosaic)
        mosaic->SetRender(render);
    return true;
}

// Leaves a layer of any kind without a render.
void removeRender(TELayer* layer)
{
    if (auto* features = dynamic_cast<TEFeatureLayer*>(layer))
        features->SetSymbolRender({});
    else if (auto* raster = dynamic_cast<TERasterLayer*>(layer))
        raster->SetRender({});
    else if (auto* mosaic = dynamic_cast<TERasterDirLayer*>(layer))
        mosaic->SetRender({});
}

} // namespace

bool TZMapProject::save(const QString& path, const std::vector<LayerState>& layers, const TZMapViewport& view,
                        QString* error)
{
    const QDir folder = QFileInfo(path).absoluteDir();
    QJsonArray layerArray;
    for (const LayerState& state : layers) {
        const TELayer* layer = state.layer.get();
        // A server connection is kept without its password.
        QString source = TEPostgresSource::WithoutPassword(layer->GetSource());
        const QFileInfo sourceInfo(source);
        if (sourceInfo.exists() && !folder.relativeFilePath(sourceInfo.absoluteFilePath()).startsWith(QLatin1String("..")))
            source = folder.relativeFilePath(sourceInfo.absoluteFilePath());
        QJsonObject entry;
        entry[QStringLiteral("kind")] = TZLayerOpener::kindOf(layer);
        entry[QStringLiteral("source")] = source;
        entry[QStringLiteral("layer")] = TZLayerOpener::sourceLayerNameOf(layer);
        entry[QStringLiteral("name")] = layer->GetLayerName().toQString();
        entry[QStringLiteral("visible")] = state.visible;
        const TERefPtr<TERender> render = layer->GetRender();
        entry[QStringLiteral("render")] = render ? QJsonValue(TEFileFunc::SaveRender(render.get())) : QJsonValue();
        layerArray.append(entry);
    }
    QJsonObject root;
    root[QStringLiteral("application")] = QStringLiteral("tzmap");
    root[QStringLiteral("version")] = FormatVersion;
    root[QStringLiteral("layers")] = layerArray;
    if (view.isValid()) {
        root[QStringLiteral("view")] = QJsonObject{{QStringLiteral("centerX"), view.centre().x()},
                                                   {QStringLiteral("centerY"), view.centre().y()},
                                                   {QStringLiteral("unitsPerPixel"), view.unitsPerPixel()}};
    }

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(root).toJson(QJsonDocument::Compact)) < 0 || !file.commit()) {
        if (error)
            *error = TZMapProject::tr("Cannot write \"%1\": %2").arg(path, file.errorString());
        return false;
    }
    return true;
}

bool TZMapProject::open(const QString& path, std::vector<LayerState>& layers, TZMapViewport& view,
                        QStringList* warnings, QString* error)
{
    layers.clear();
    view = TZMapViewport();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = TZMapProject::tr("Cannot read \"%1\": %2").arg(path, file.errorString());
        return false;
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    const QJsonObject root = document.object();
    if (document.isNull() || root.value(QStringLiteral("application")).toString() != QLatin1String("tzmap")) {
        if (error)
            *error = TZMapProject::tr("\"%1\" is not a tzmap project.").arg(path);
        return false;
    }
    const int version = root.value(QStringLiteral("version")).toInt();
    if (version > FormatVersion) {
        if (error)
            *error = TZMapProject::tr("\"%1\" was written by a newer tzmap.").arg(path);
        return false;
    }

    const QDir folder = QFileInfo(path).absoluteDir();
    for (const QJsonValue& value : root.value(QStringLiteral("layers")).toArray()) {
        const QJsonObject entry = value.toObject();
        QString source = entry.value(QStringLiteral("source")).toString();
        // Relative to the project's folder; resolved even when missing, so
        // that the warning names the file that was looked for.
        if (!source.isEmpty() && !source.contains(QLatin1Char(':')) && QFileInfo(source).isRelative())
            source = QDir::cleanPath(folder.filePath(source));
        const QString name = entry.value(QStringLiteral("name")).toString();
        QString layerError;
        TERefPtr<TELayer> layer = TZLayerOpener::openLayer(entry.value(QStringLiteral("kind")).toString(), source,
                                                           entry.value(QStringLiteral("layer")).toString(), &layerError);
        if (!layer) {
            if (warnings)
                *warnings << TZMapProject::tr("Layer \"%1\" was left out: %2").arg(name, layerError);
            continue;
        }
        if (!name.isEmpty())
            layer->SetLayerName(TEString(name));
        const QJsonValue render = entry.value(QStringLiteral("render"));
        QString renderError;
        if (render.isObject()) {
            if (!applyRender(layer.get(), render.toObject(), &renderError) && warnings)
                *warnings << TZMapProject::tr("The symbology of \"%1\" could not be read: %2. It is drawn with its default symbology.")
                                 .arg(name, renderError);
        } else if (render.isNull() && version >= 2) {
            removeRender(layer.get());
        } else if (!render.isUndefined() && !render.isNull() && warnings) {
            *warnings << TZMapProject::tr("The symbology of \"%1\" is not a render object. It is drawn with its default symbology.")
                             .arg(name);
        }
        layers.push_back({layer, entry.value(QStringLiteral("visible")).toBool(true)});
    }

    const QJsonObject viewJson = root.value(QStringLiteral("view")).toObject();
    const double unitsPerPixel = viewJson.value(QStringLiteral("unitsPerPixel")).toDouble();
    if (unitsPerPixel > 0.0) {
        view = TZMapViewport(QSize(1, 1), QPointF(viewJson.value(QStringLiteral("centerX")).toDouble(),
                                                  viewJson.value(QStringLiteral("centerY")).toDouble()),
                             unitsPerPixel);
    }
    return true;
}
