#pragma once

#include "symbology/TEStyle.h"

namespace TZObjects {

// One part of a diagram (a pie slice, a bar, a stack segment): the numeric
// field it shows, its caption and its fill style.
class TZOBJECTS_EXPORT TEDiagramRenderItem : public TERefBase
{
public:
    TEDiagramRenderItem() = default;
    TEDiagramRenderItem(const TEString& field, const TEString& caption, const TERefPtr<TEStyle>& style)
        : mField(field), mCaption(caption), mStyle(style) {}

    TEString GetField() const { return mField; }
    void SetField(const TEString& field) { mField = field; }
    TEString GetCaption() const { return mCaption; }
    void SetCaption(const TEString& caption) { mCaption = caption; }
    TERefPtr<TEStyle> GetStyle() const { return mStyle; }
    void SetStyle(const TERefPtr<TEStyle>& style) { mStyle = style; }

private:
    TEString mField;
    TEString mCaption;
    TERefPtr<TEStyle> mStyle;
};

} // namespace TZObjects
