#include "symbology/TEStyleSimpleFill.h"

#include <QJsonObject>
#include <QPainter>

namespace TZObjects {

namespace {

Qt::BrushStyle toQtBrushStyle(int kind)
{
    switch (kind) {
    case TEStyleSimpleFill::Hollow: return Qt::NoBrush;
    case TEStyleSimpleFill::Horizontal: return Qt::HorPattern;
    case TEStyleSimpleFill::Vertical: return Qt::VerPattern;
    case TEStyleSimpleFill::CrossHatch: return Qt::CrossPattern;
    case TEStyleSimpleFill::BDiagonal: return Qt::BDiagPattern;
    case TEStyleSimpleFill::FDiagonal: return Qt::FDiagPattern;
    case TEStyleSimpleFill::DiagonalCross: return Qt::DiagCrossPattern;
    case TEStyleSimpleFill::Dense: return Qt::Dense4Pattern;
    default: return Qt::SolidPattern;
    }
}

} // namespace

TEStyleSimpleFill::TEStyleSimpleFill()
{
    auto outline = MakeRef<TEStyleSimpleLine>();
    outline->SetColor(TEColor(0x40, 0x40, 0x40));
    outline->SetWidth(0.26);
    SetOutline(outline);
}

TERefPtr<TEStyle> TEStyleSimpleFill::Clone() const
{
    return TERefPtr<TEStyle>(new TEStyleSimpleFill(*this));
}

void TEStyleSimpleFill::SetupDC(QPainter* painter) const
{
    if (!painter)
        return;
    painter->setPen(Qt::NoPen);
    painter->setBrush(QBrush(toQColor(GetColor()), toQtBrushStyle(mFillKind)));
}

void TEStyleSimpleFill::drawInterior(QPainter* painter, const QPainterPath& device) const
{
    if (mFillKind == Hollow)
        return;
    painter->fillPath(device, QBrush(toQColor(GetColor()), toQtBrushStyle(mFillKind)));
}

bool TEStyleSimpleFill::Equals(const TEStyle& other) const
{
    if (!TEStyleFill::Equals(other))
        return false;
    return mFillKind == static_cast<const TEStyleSimpleFill&>(other).mFillKind;
}

void TEStyleSimpleFill::save(QJsonObject& json) const
{
    TEStyleFill::save(json);
    json.insert("fillKind", mFillKind);
}

bool TEStyleSimpleFill::open(const QJsonObject& json)
{
    if (!TEStyleFill::open(json))
        return false;
    mFillKind = json.value("fillKind").toInt(mFillKind);
    return true;
}

} // namespace TZObjects
