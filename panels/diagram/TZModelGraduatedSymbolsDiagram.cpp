#include "TZModelGraduatedSymbolsDiagram.h"

#include "symbology/TEStyleSimplePoint.h"
#include "widgets/TZSymbolUtils.h"

using namespace TZObjects;

TZModelGraduatedSymbolsDiagram::TZModelGraduatedSymbolsDiagram(QObject* parent)
    : TZModelGradingSymbol(parent)
    , mTemplate(defaultTemplate())
{
}

TZModelGraduatedSymbolsDiagram::~TZModelGraduatedSymbolsDiagram() = default;

TERefPtr<TEStyle> TZModelGraduatedSymbolsDiagram::defaultTemplate()
{
    auto point = MakeRef<TEStyleSimplePoint>();
    point->SetShapeType(1);
    point->SetUnits(TEStyle::Point);
    point->SetWidth(4.0);
    point->SetHeight(4.0);
    point->SetColor(TEColor(78, 121, 167));
    point->SetOutlineColor(TEColor(185, 185, 185));
    point->SetOutlineWidth(0.25);
    return point;
}

TERefPtr<TEStyle> TZModelGraduatedSymbolsDiagram::createStyle(const TEColor& color) const
{
    if (!layer() || field().isEmpty() || !mTemplate)
        return nullptr;
    TERefPtr<TEStyle> copy = mTemplate->Clone();
    copy->SetColor(TEColor(color.GetColor(), 255));
    if (auto* point = dynamic_cast<TEStyleSimplePoint*>(copy.get())) {
        point->SetOutlineColor(outlineColor());
        point->SetOutlineWidth(outlineWidth());
    }
    return copy;
}

void TZModelGraduatedSymbolsDiagram::setSizeRange(double minimum, double maximum)
{
    mMinimumSize = minimum;
    mMaximumSize = maximum;
    if (rowCount() > 1)
        emit dataChanged(index(1, SymbolColumn), index(rowCount() - 1, SymbolColumn), {Qt::DecorationRole});
}

double TZModelGraduatedSymbolsDiagram::classSize(int row) const
{
    const int rows = rowCount();
    const double step = rows > 0 ? (mMaximumSize - mMinimumSize) / rows : 1.0;
    return (row + 1) * step + mMinimumSize;
}

QVariant TZModelGraduatedSymbolsDiagram::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DecorationRole || index.column() != SymbolColumn || index.row() < 1 || index.row() >= rowCount())
        return TZModelGradingSymbol::data(index, role);
    const TERefPtr<TEStyle> style = item(index.row()).style;
    if (!style)
        return QVariant();
    TERefPtr<TEStyle> sized = style->Clone();
    if (auto* point = dynamic_cast<TEStylePoint*>(sized.get()))
        point->SetSize(classSize(index.row()));
    return TZSymbolUtils::symbolPreviewIcon(sized.get(), QSize(32, 32));
}
