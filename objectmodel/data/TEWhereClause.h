#pragma once

#include "core/TEString.h"

#include <QString>

#include <ogr_api.h>

#include <memory>

class OGRFeatureQuery;

namespace TZObjects {

// An OGR SQL where clause compiled against a layer's feature definition and
// evaluated on single features (edit-buffer queries, rule renders). Use one
// per thread.
class TZOBJECTS_EXPORT TEWhereClause
{
public:
    TEWhereClause();
    ~TEWhereClause();
    TEWhereClause(const TEWhereClause&) = delete;
    TEWhereClause& operator=(const TEWhereClause&) = delete;

    // An empty clause compiles and matches every feature. False, with the
    // parser's message in error, when the clause does not compile.
    bool Compile(OGRFeatureDefnH definition, const TEString& clause, QString* error = nullptr);
    bool IsCompiled() const { return mCompiled; }

    bool Evaluate(OGRFeatureH feature) const;

private:
    std::unique_ptr<OGRFeatureQuery> mQuery;
    bool mCompiled = false;
};

} // namespace TZObjects
