#pragma once

#include "symbology/TEStyleLine.h"

namespace TZObjects {

// A plain stroke of one colour, width and dash pattern.
class TZOBJECTS_EXPORT TEStyleSimpleLine : public TEStyleLine
{
public:
    enum PenStyle
    {
        Solid = 0,
        Dash = 1,
        Dot = 2,
        DashDot = 3,
        DashDotDot = 4,
        NoPen = 5,
    };

    TEStyleSimpleLine() = default;

    StyleClass GetStyleClass() const override { return SimpleLine; }
    TERefPtr<TEStyle> Clone() const override;

    int GetPenStyle() const { return mPenStyle; }
    void SetPenStyle(int penStyle) { mPenStyle = penStyle; }

    void SetupDC(QPainter* painter) const override;
    bool DrawLine(QPainter* painter, const QPolygonF& device, double angle = 0.0) const override;

    bool Equals(const TEStyle& other) const override;
    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json) override;

private:
    int mPenStyle = Solid;
};

} // namespace TZObjects
