#include "data/TEWhereClause.h"

#include <cpl_error.h>
#include <ogr_feature.h>

namespace TZObjects {

TEWhereClause::TEWhereClause() = default;
TEWhereClause::~TEWhereClause() = default;

bool TEWhereClause::Compile(OGRFeatureDefnH definition, const TEString& clause, QString* error)
{
    mQuery.reset();
    mCompiled = false;
    if (!definition) {
        if (error)
            *error = QStringLiteral("No feature definition to compile the filter against.");
        return false;
    }
    if (clause.IsEmpty()) {
        mCompiled = true;
        return true;
    }
    auto query = std::make_unique<OGRFeatureQuery>();
    CPLErrorReset();
    if (query->Compile(OGRFeatureDefn::FromHandle(definition), clause.toUTF8().c_str()) != OGRERR_NONE) {
        if (error)
            *error = QStringLiteral("Invalid filter \"%1\": %2").arg(clause.toQString(), QString::fromUtf8(CPLGetLastErrorMsg()));
        return false;
    }
    mQuery = std::move(query);
    mCompiled = true;
    return true;
}

bool TEWhereClause::Evaluate(OGRFeatureH feature) const
{
    if (!mCompiled || !feature)
        return false;
    return !mQuery || mQuery->Evaluate(OGRFeature::FromHandle(feature));
}

} // namespace TZObjects
