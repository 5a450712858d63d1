#pragma once

#include "TZRenderExport.h"

#include "core/TEColor.h"
#include "core/TERefPtr.h"
#include "data/TEField.h"
#include "data/TEFeatureLayer.h"
#include "symbology/TEStyle.h"

#include <QAbstractListModel>
#include <QSize>

#include <vector>

class TZColorSchemeComboBox;

// The chosen fields of a diagram panel, one row each: column 0 "Symbols"
// shows the row's fill symbol, column 1 "Field" the field's name. A new
// row's colour is colour <row count> of the ramp divided into ramp-size
// colours, so the first chosen field takes the first colour whatever its
// place in the field list. The histogram and stack models are this model.
class TZRENDER_EXPORT TZModelPanelPieDiagram : public QAbstractListModel
{
    Q_OBJECT
public:
    struct Row
    {
        TZObjects::TERefPtr<TZObjects::TEStyle> style;
        QString field;
    };

    explicit TZModelPanelPieDiagram(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant& value,
                       int role = Qt::EditRole) override;

    // Appends a row for the field with a fill symbol coloured from the ramp.
    // False for no field, a field already listed, or a combo without a
    // ramp; without a combo nothing is added but the result is true.
    bool addField(const TZObjects::TEField* field);
    // Appends a row with the style as it is (a render read back); false
    // when the field is already listed.
    bool addRow(const QString& field, const TZObjects::TERefPtr<TZObjects::TEStyle>& style);
    bool removeField(const QString& fieldName);
    void clear();
    // Gives every row a new symbol of colour i of the combo's current ramp.
    void recolor();
    // Replaces a row's style; both columns of the row are announced.
    bool setRowStyle(int row, const TZObjects::TERefPtr<TZObjects::TEStyle>& style);

    const Row& row(int i) const { return mRows[std::size_t(i)]; }
    int rampSize() const { return mRampSize; }
    void setRampSize(int size) { mRampSize = size; }
    void setLayer(TZObjects::TEFeatureLayer* layer) { mLayer = layer; }
    void setColorCombo(TZColorSchemeComboBox* combo) { mColorCombo = combo; }
    QSize previewSize() const { return mPreviewSize; }

private:
    TZObjects::TERefPtr<TZObjects::TEStyle> makeSymbol(const TZObjects::TEColor& color) const;
    int indexOf(const QString& fieldName) const;

    std::vector<Row> mRows;
    QString mHeaders[2];
    QSize mPreviewSize{85, 23};
    double mOutlineWidth = 1.0;
    int mOutlineUnit = 0;
    TZObjects::TEColor mOutlineColor{0, 0, 0, 255};
    int mRampSize = 0;
    TZObjects::TERefPtr<TZObjects::TEFeatureLayer> mLayer;
    TZColorSchemeComboBox* mColorCombo = nullptr;
};
