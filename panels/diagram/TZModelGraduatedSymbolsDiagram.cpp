#include "TZModelGraduatedSymbolsDiagram.h"

#include "symbology/TEStyleSimplePoint.h"

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
    point->SetUnits(0);
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
