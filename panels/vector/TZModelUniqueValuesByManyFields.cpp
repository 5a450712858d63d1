#include "TZModelUniqueValuesByManyFields.h"

#include "data/TEFeature.h"
#include "data/TEFeatureTable.h"

#include <QMessageBox>

using namespace TZObjects;

namespace {

const QString KeySeparator = QStringLiteral(",");

} // namespace

TZModelUniqueValuesByManyFields::TZModelUniqueValuesByManyFields(QObject* parent)
    : TZModelUniqueValues(parent)
{
}

void TZModelUniqueValuesByManyFields::setLayerAndFields(TEFeatureLayer* layer, const QStringList& fields)
{
    mFields = fields;
    setLayer(layer, QString());
}

QString TZModelUniqueValuesByManyFields::keyOf(const TEFeature& feature) const
{
    QStringList texts;
    texts.reserve(mFields.size());
    for (const QString& field : mFields)
        texts << feature.GetValue(TEString(field)).ToString().toQString();
    return texts.join(KeySeparator);
}

void TZModelUniqueValuesByManyFields::addAllCombinations(const TEColorRamp* ramp, QWidget* dialogParent)
{
    if (!layer() || mFields.isEmpty())
        return;
    clear();
    mFeatureCount = layer()->GetFeatureCount();
    if (mFeatureCount >= LargeLayerFeatures) {
        const QMessageBox::StandardButton answer = QMessageBox::warning(
            nullptr, tr("warning"), tr("This data big, get unique data is slowly,would you like to continus?"),
            QMessageBox::Yes | QMessageBox::Cancel);
        if (answer != QMessageBox::Yes)
            return;
    }
    addAllValues(ramp, dialogParent);
}

void TZModelUniqueValuesByManyFields::collectValues(bool)
{
    // Every collection over several fields counts.
    collectKeys(mFields);
}

void TZModelUniqueValuesByManyFields::collectRenderValues(const QString& fields)
{
    collectKeys(fields.split(KeySeparator, Qt::SkipEmptyParts));
}

void TZModelUniqueValuesByManyFields::collectKeys(const QStringList& fields)
{
    QStringList keys;
    QHash<QString, int> counts;
    const TERefPtr<TEFeatureTable> table = layer() ? layer()->GetDatasource() : nullptr;
    std::vector<TEString> names;
    for (const QString& field : fields)
        names.push_back(TEString(field));
    std::vector<int> found;
    if (table && !names.empty() && table->GetKeyTexts(names, KeySeparator, layer()->query_filter(), keys, found)) {
        counts.reserve(keys.size());
        for (int i = 0; i < keys.size(); ++i)
            counts.insert(keys[i], found[size_t(i)]);
    } else {
        keys.clear();
    }
    setCollectedValues(keys, counts);
}
