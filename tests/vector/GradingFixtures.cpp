#include "GradingFixtures.h"

#include <QAbstractItemModel>

using namespace TZObjects;

namespace GradingFixtures {

TERefPtr<TEMemoryFeatureLayer> makeLayer(TELayer::LayerType type, const QList<double>& values)
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("grades"), type,
        {{QStringLiteral("name"), TEField::FT_String},
         {QStringLiteral("v"), TEField::FT_Double},
         {QStringLiteral("code"), TEField::FT_Integer}});
    for (int i = 0; i < values.size(); ++i) {
        const double x = i % 10;
        const double y = i / 10;
        const QString wkt = type == TELayer::LT_Polygon
            ? QStringLiteral("POLYGON((%1 %2,%3 %2,%3 %4,%1 %4,%1 %2))").arg(x).arg(y).arg(x + 0.8).arg(y + 0.8)
            : type == TELayer::LT_Line ? QStringLiteral("LINESTRING(%1 %2,%3 %4)").arg(x).arg(y).arg(x + 0.5).arg(y + 0.5)
                                       : QStringLiteral("POINT(%1 %2)").arg(x).arg(y);
        layer->AppendFeature(wkt, {TEVariant(TEString(QStringLiteral("f%1").arg(i))), TEVariant(values[i]),
                                   TEVariant(i)});
    }
    return layer;
}

QStringList column(const QAbstractItemModel& model, int column)
{
    QStringList texts;
    for (int r = 0; r < model.rowCount(); ++r)
        texts << model.index(r, column).data().toString();
    return texts;
}

QList<int> counts(const QAbstractItemModel& model)
{
    QList<int> result;
    for (int r = 0; r < model.rowCount(); ++r)
        result << model.index(r, 3).data().toInt();
    return result;
}

} // namespace GradingFixtures
