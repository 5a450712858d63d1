#pragma once

#include "TZModelGradingSymbol.h"

// The class table of the graduated symbols page: the grading table whose
// class symbols are copies of a template symbol in the class colours.
class TZRENDER_EXPORT TZModelGraduatedSymbolsDiagram : public TZModelGradingSymbol
{
    Q_OBJECT
public:
    explicit TZModelGraduatedSymbolsDiagram(QObject* parent = nullptr);
    ~TZModelGraduatedSymbolsDiagram() override;

    TZObjects::TERefPtr<TZObjects::TEStyle> templateStyle() const { return mTemplate; }
    void setTemplateStyle(const TZObjects::TERefPtr<TZObjects::TEStyle>& style) { mTemplate = style; }

    // A copy of the template in the colour, with the model's outline when
    // the template is a simple point; empty without a layer, a field or a
    // template.
    TZObjects::TERefPtr<TZObjects::TEStyle> createStyle(const TZObjects::TEColor& color) const override;

    // The sizes the classes are drawn at: row r of n rows (the catch-all
    // row counted) at (r + 1) * (maximum - minimum) / n + minimum. The class
    // symbols are shown at those sizes.
    void setSizeRange(double minimum, double maximum);
    double classSize(int row) const;

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    // A circle in typographic points, the template until the user picks one.
    static TZObjects::TERefPtr<TZObjects::TEStyle> defaultTemplate();

private:
    TZObjects::TERefPtr<TZObjects::TEStyle> mTemplate;
    double mMinimumSize = 4.0;
    double mMaximumSize = 20.0;
};
