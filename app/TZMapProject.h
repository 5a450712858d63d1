#pragma once

#include "TZMapViewport.h"

#include "core/TERefPtr.h"
#include "data/TELayer.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <vector>

// A tzmap project file (compact JSON): the layers, top of the list first,
// each with its source, display name, visibility and render (as the
// render's own JSON, or null for a layer left without one), and the view.
// Sources inside the project's folder are stored relative to it, so a
// project moves with its data. Saving and opening touch no widget, so that
// they can run off the GUI thread.
class TZMapProject
{
    Q_DECLARE_TR_FUNCTIONS(TZMapProject)

public:
    struct LayerState
    {
        TZObjects::TERefPtr<TZObjects::TELayer> layer;
        bool visible = true;
    };

    static constexpr const char* FileFilter = "tzmap projects (*.tzmap)";

    // Writes the project; false with a message when the file cannot be written.
    static bool save(const QString& path, const std::vector<LayerState>& layers, const TZMapViewport& view,
                     QString* error);

    // Reads a project: its layers with their renders set (a layer whose
    // entry has no render opens with its default one), and the view
    // (centre and resolution; invalid when the file has none). A layer or
    // render that cannot be read is left out with a line in warnings; false
    // with a message only when the file itself cannot be read.
    static bool open(const QString& path, std::vector<LayerState>& layers, TZMapViewport& view,
                     QStringList* warnings, QString* error);
};
