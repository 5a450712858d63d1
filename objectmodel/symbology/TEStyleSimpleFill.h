#pragma once

#include "symbology/TEStyleFill.h"
#include "symbology/TEStyleSimpleLine.h"

namespace TZObjects {

// A polygon interior of one colour, solid or hatched, with a line outline
// (a simple line by default).
class TZOBJECTS_EXPORT TEStyleSimpleFill : public TEStyleFill
{
public:
    enum FillKind
    {
        Solid = 0,
        Hollow = 1,
        Horizontal = 2,
        Vertical = 3,
        CrossHatch = 4,
        BDiagonal = 5,
        FDiagonal = 6,
        DiagonalCross = 7,
        Dense = 8,
    };

    // A solid fill with a thin dark grey simple line outline.
    TEStyleSimpleFill();

    StyleClass GetStyleClass() const override { return SimpleFill; }
    TERefPtr<TEStyle> Clone() const override;

    int GetFillKind() const { return mFillKind; }
    void SetFillKind(int kind) { mFillKind = kind; }

    void SetupDC(QPainter* painter) const override;

    bool Equals(const TEStyle& other) const override;
    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json) override;

protected:
    void drawInterior(QPainter* painter, const QPainterPath& device) const override;

private:
    int mFillKind = Solid;
};

} // namespace TZObjects
