#pragma once

#include "renders/TECategorizedSymbolRender.h"

namespace TZObjects {

// A categorized render whose styles were matched by name in one style
// database: it remembers that database's name. A category saved without a
// style takes the database's style of the same name as its value.
class TZOBJECTS_EXPORT TEMatchToSymbolsRender : public TECategorizedSymbolRender
{
public:
    using TECategorizedSymbolRender::TECategorizedSymbolRender;

    TEString GetType() const override { return L"MatchToSymbols"; }
    TERefPtr<TEFeatureRender> Clone() const override;

    TEString getSymbolDB() const { return mSymbolDB; }
    void setSymbolDB(const TEString& name) { mSymbolDB = name; }

    // Gives every category without a style the style of the symbol database
    // whose name equals the category's value, if there is one; returns the
    // number of categories so completed.
    int ResolveStylesFromSymbolDB(TEStyle::StyleType styleType);

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    TEString mSymbolDB;
};

} // namespace TZObjects
