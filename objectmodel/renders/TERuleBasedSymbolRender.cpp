#include "renders/TERuleBasedSymbolRender.h"

#include "data/TEFeature.h"
#include "data/TEWhereClause.h"
#include "renders/TEFileFunc.h"
#include "symbology/TEStyleMultiLayer.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

#include <algorithm>

namespace TZObjects {

namespace {

// Identifiers of an OGR SQL where-clause that are fields: bare words that
// are not keywords, literals or function names, and double-quoted names.
std::vector<TEString> FieldsOfExpression(const TEString& expression)
{
    static const QSet<QString> keywords = {
        QStringLiteral("AND"), QStringLiteral("OR"), QStringLiteral("NOT"), QStringLiteral("LIKE"),
        QStringLiteral("ILIKE"), QStringLiteral("IN"), QStringLiteral("IS"), QStringLiteral("NULL"),
        QStringLiteral("BETWEEN"), QStringLiteral("ESCAPE"), QStringLiteral("TRUE"), QStringLiteral("FALSE"),
        QStringLiteral("CAST"), QStringLiteral("AS")};
    // A quoted literal (skipped), a double-quoted name, or a bare word with
    // an opening parenthesis after it when it is a function call.
    static const QRegularExpression token(QString::fromLatin1(
        "'(?:[^']|'')*'|\"((?:[^\"]|\"\")*)\"|([A-Za-z_][A-Za-z0-9_]*)(\\s*\\()?"));
    std::vector<TEString> fields;
    QRegularExpressionMatchIterator it = token.globalMatch(expression.toQString());
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        QString name;
        if (match.capturedStart(1) >= 0)
            name = match.captured(1).replace(QStringLiteral("\"\""), QStringLiteral("\""));
        else if (match.capturedStart(2) >= 0 && match.capturedStart(3) < 0
                 && !keywords.contains(match.captured(2).toUpper()))
            name = match.captured(2);
        if (!name.isEmpty() && std::find(fields.begin(), fields.end(), TEString(name)) == fields.end())
            fields.emplace_back(name);
    }
    return fields;
}

bool IsBlank(const TEString& expression)
{
    return expression.toQString().trimmed().isEmpty();
}

} // namespace

// The symbol made for one combination of matching rules, with the styles it
// was made from, so that a rule given another style since is noticed.
struct TERuleBasedSymbolRender::Composite
{
    std::vector<int> rules;
    std::vector<TERefPtr<TEStyle>> sources;
    TERefPtr<TEStyle> style;
};

TERuleBasedSymbolRender::Rule::Rule() = default;

TERuleBasedSymbolRender::Rule::Rule(const TERefPtr<TEStyle>& style, const TEString& expression,
                                    const TEString& label)
    : mExpression(expression), mMatchesAll(IsBlank(expression)), mStyle(style), mLabel(label)
{
}

TERuleBasedSymbolRender::Rule::Rule(const Rule& other)
    : TERefBase(other)
    , mExpression(other.mExpression)
    , mMatchesAll(other.mMatchesAll)
    , mStyle(CloneStyle(other.mStyle))
    , mLabel(other.mLabel)
    , mScaleRange(other.mScaleRange)
{
}

TERuleBasedSymbolRender::Rule::~Rule()
{
    DropCompiled();
}

TERefPtr<TERuleBasedSymbolRender::Rule> TERuleBasedSymbolRender::Rule::Clone() const
{
    return MakeRef<Rule>(*this);
}

void TERuleBasedSymbolRender::Rule::SetExpression(const TEString& expression)
{
    std::lock_guard<std::mutex> lock(mCompileMutex);
    mExpression = expression;
    mMatchesAll = IsBlank(expression);
    DropCompiled();
}

void TERuleBasedSymbolRender::Rule::DropCompiled() const
{
    mCompiled.reset();
    mError.clear();
    if (mCompiledFor)
        OGR_FD_Release(static_cast<OGRFeatureDefnH>(mCompiledFor));
    mCompiledFor = nullptr;
}

bool TERuleBasedSymbolRender::Rule::Matches(TEFeature* feature) const
{
    if (!feature || !feature->GetHandle())
        return false;
    if (mMatchesAll)
        return true;
    OGRFeatureDefnH definition = OGR_F_GetDefnRef(feature->GetHandle());
    std::lock_guard<std::mutex> lock(mCompileMutex);
    if (mCompiledFor != definition) {
        DropCompiled();
        OGR_FD_Reference(definition);
        mCompiledFor = definition;
        mCompiled = std::make_unique<TEWhereClause>();
        QString error;
        if (!mCompiled->Compile(definition, mExpression, &error))
            mError = TEString(error.isEmpty() ? QStringLiteral("The filter does not compile") : error);
    }
    return mCompiled->IsCompiled() && mCompiled->Evaluate(feature->GetHandle());
}

TEString TERuleBasedSymbolRender::Rule::GetError() const
{
    std::lock_guard<std::mutex> lock(mCompileMutex);
    return mError;
}

std::vector<TEString> TERuleBasedSymbolRender::Rule::UsedFields() const
{
    std::vector<TEString> fields;
    for (const TEString& field : FieldsOfExpression(mExpression)) {
        const QString upper = field.toQString().toUpper();
        if (!upper.startsWith(QStringLiteral("OGR_")) && upper != QStringLiteral("FID"))
            fields.push_back(field);
    }
    return fields;
}

bool TERuleBasedSymbolRender::Rule::NeedsGeometry() const
{
    for (const TEString& field : FieldsOfExpression(mExpression)) {
        const QString upper = field.toQString().toUpper();
        if (upper == QStringLiteral("OGR_GEOMETRY") || upper == QStringLiteral("OGR_GEOM_WKT")
            || upper == QStringLiteral("OGR_GEOM_AREA"))
            return true;
    }
    return false;
}

bool TERuleBasedSymbolRender::Rule::ReadsFieldsOnly() const
{
    const std::vector<TEString> all = FieldsOfExpression(mExpression);
    return UsedFields().size() == all.size();
}

void TERuleBasedSymbolRender::Rule::save(QJsonObject& json) const
{
    json[QStringLiteral("expression")] = mExpression.toQString();
    json[QStringLiteral("label")] = mLabel.toQString();
    json[QStringLiteral("style")] = TEFileFunc::SaveStyle(mStyle.get());
    mScaleRange.save(json);
}

bool TERuleBasedSymbolRender::Rule::open(const QJsonObject& json, TEString* error)
{
    SetExpression(TEString(json.value(QStringLiteral("expression")).toString()));
    mLabel = TEString(json.value(QStringLiteral("label")).toString());
    mScaleRange.open(json);
    return TEFileFunc::OpenStyle(json.value(QStringLiteral("style")), mStyle, error);
}

TERuleBasedSymbolRender::TERuleBasedSymbolRender() = default;

TERuleBasedSymbolRender::TERuleBasedSymbolRender(const TERuleBasedSymbolRender& other)
    : TEFeatureRender(other)
{
    for (const TERefPtr<Rule>& rule : other.mRules)
        mRules.push_back(rule->Clone());
}

TERuleBasedSymbolRender::~TERuleBasedSymbolRender() = default;

TERefPtr<TEFeatureRender> TERuleBasedSymbolRender::Clone() const
{
    return MakeRef<TERuleBasedSymbolRender>(*this);
}

TERefPtr<TEStyle> TERuleBasedSymbolRender::GetStyleByFeature(TEFeature* feature, const double& scale,
                                                             bool ignoreScaleRange) const
{
    if (!feature)
        return {};
    // Indexes of the matching rules; few rules need no allocation.
    constexpr int Inline = 32;
    int inlineMatched[Inline];
    std::vector<int> moreMatched;
    int* matched = inlineMatched;
    if (mRules.size() > size_t(Inline)) {
        moreMatched.resize(mRules.size());
        matched = moreMatched.data();
    }
    int count = 0;
    for (size_t i = 0; i < mRules.size(); ++i) {
        const Rule* rule = mRules[i].get();
        // The scale range is a comparison; the filter may be an evaluation
        // of the whole record, so it comes second.
        if (!rule->mStyle || !(ignoreScaleRange || rule->mScaleRange.Contains(scale)) || !rule->Matches(feature))
            continue;
        matched[count++] = int(i);
    }
    if (count == 0)
        return {};
    if (count == 1)
        return mRules[size_t(matched[0])]->mStyle;
    return CompositeOf(matched, count);
}

TERefPtr<TEStyle> TERuleBasedSymbolRender::CompositeOf(const int* matched, int count) const
{
    std::lock_guard<std::mutex> lock(mCompositeMutex);
    for (const Composite& made : mComposites) {
        if (int(made.rules.size()) != count || !std::equal(made.rules.begin(), made.rules.end(), matched))
            continue;
        bool current = true;
        for (int i = 0; i < count && current; ++i)
            current = made.sources[size_t(i)] == mRules[size_t(matched[i])]->mStyle;
        if (current)
            return made.style;
        break;
    }
    Composite made;
    const TERefPtr<TEStyle>& first = mRules[size_t(matched[0])]->mStyle;
    auto symbol = MakeRef<TEStyleMultiLayer>(first->GetStyleType());
    for (int i = 0; i < count; ++i) {
        const TERefPtr<TEStyle>& style = mRules[size_t(matched[i])]->mStyle;
        made.rules.push_back(matched[i]);
        made.sources.push_back(style);
        // The layers of a multi-layer symbol join in their own drawing
        // order, so that symbol priorities keep working layer by layer.
        if (const auto* multi = dynamic_cast<const TEStyleMultiLayer*>(style.get())) {
            for (int index : multi->DrawingOrder())
                symbol->AddLayer(TERefPtr<TEStyle>(multi->GetLayer(index)));
        } else {
            symbol->AddLayer(style);
        }
    }
    made.style = symbol;
    // The combinations met in one drawing are few; a render whose rules
    // change keeps only the latest ones.
    constexpr size_t MaxComposites = 256;
    if (mComposites.size() >= MaxComposites)
        mComposites.clear();
    mComposites.erase(std::remove_if(mComposites.begin(), mComposites.end(),
                                     [&](const Composite& old) { return old.rules == made.rules; }),
                      mComposites.end());
    mComposites.push_back(std::move(made));
    return symbol;
}

TEString TERuleBasedSymbolRender::GetLastError() const
{
    QStringList failures;
    for (size_t i = 0; i < mRules.size(); ++i) {
        const TEString error = mRules[i]->GetError();
        if (error.IsEmpty())
            continue;
        const QString label = mRules[i]->Label().toQString();
        failures << (label.isEmpty() ? QStringLiteral("rule %1: %2").arg(i + 1).arg(error.toQString())
                                     : QStringLiteral("rule %1 \"%2\": %3").arg(i + 1).arg(label, error.toQString()));
    }
    return TEString(failures.join(QStringLiteral("; ")));
}

std::vector<TEString> TERuleBasedSymbolRender::GetUsedAttributes() const
{
    std::vector<TEString> fields;
    for (const TERefPtr<Rule>& rule : mRules) {
        for (const TEString& field : rule->UsedFields())
            AddUsedAttribute(fields, field);
    }
    for (const TEString& field : TEFeatureRender::GetUsedAttributes())
        AddUsedAttribute(fields, field);
    return fields;
}

bool TERuleBasedSymbolRender::FilterNeedsGeometry() const
{
    return std::any_of(mRules.begin(), mRules.end(),
                       [](const TERefPtr<Rule>& rule) { return rule->NeedsGeometry(); });
}

bool TERuleBasedSymbolRender::StyleFollowsUsedAttributes() const
{
    return std::all_of(mRules.begin(), mRules.end(),
                       [](const TERefPtr<Rule>& rule) { return rule->ReadsFieldsOnly(); });
}

void TERuleBasedSymbolRender::AddRule(const TERefPtr<Rule>& rule)
{
    if (!rule)
        return;
    mRules.push_back(rule);
    DropComposites();
}

void TERuleBasedSymbolRender::RemoveAllRules()
{
    mRules.clear();
    DropComposites();
}

void TERuleBasedSymbolRender::DropComposites()
{
    std::lock_guard<std::mutex> lock(mCompositeMutex);
    mComposites.clear();
}

TERefPtr<TERuleBasedSymbolRender::Rule> TERuleBasedSymbolRender::GetRule(int index) const
{
    if (index < 0 || index >= RuleCount())
        return {};
    return mRules[size_t(index)];
}

void TERuleBasedSymbolRender::RemoveRule(int index)
{
    if (index >= 0 && index < RuleCount())
        mRules.erase(mRules.begin() + index);
    DropComposites();
}

void TERuleBasedSymbolRender::save(QJsonObject& json) const
{
    TEFeatureRender::save(json);
    QJsonArray rules;
    for (const TERefPtr<Rule>& rule : mRules) {
        QJsonObject ruleJson;
        rule->save(ruleJson);
        rules.append(ruleJson);
    }
    json[QStringLiteral("rules")] = rules;
}

bool TERuleBasedSymbolRender::open(const QJsonObject& json, TEString* error)
{
    if (!TEFeatureRender::open(json, error))
        return false;
    RemoveAllRules();
    bool ok = true;
    if (!TEFileFunc::IsListOrMissing(json, "rules", error))
        return false;
    for (const QJsonValue& value : json.value(QStringLiteral("rules")).toArray()) {
        auto rule = MakeRef<Rule>();
        ok = rule->open(value.toObject(), error) && ok;
        mRules.push_back(rule);
    }
    return ok;
}

void TERuleBasedSymbolRender::VisitStyles(const StyleVisitor& visit)
{
    for (const TERefPtr<Rule>& rule : mRules) {
        TERefPtr<TEStyle> style = rule->Style();
        visit(style);
        rule->SetStyle(style);
    }
}

} // namespace TZObjects
