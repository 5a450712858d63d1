// Render and style JSON: whatever a render file holds, opening it either
// fails with an error text or gives a render that saves and opens again.
#include "FuzzSupport.h"

#include "renders/TEFileFunc.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdlib>

using namespace TZObjects;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    tzFuzzInit();
    const QJsonDocument document = QJsonDocument::fromJson(tzFuzzBytes(data, size));
    if (!document.isObject())
        return 0;
    TEString error;
    TERefPtr<TERender> render = TEFileFunc::OpenRender(document.object(), &error);
    if (!render) {
        if (error.toQString().isEmpty())
            abort(); // a refused render must say why
        return 0;
    }
    // What was accepted must survive its own save.
    const QJsonObject saved = TEFileFunc::SaveRender(render.get());
    TEString again;
    if (!TEFileFunc::OpenRender(saved, &again))
        abort();
    TERefPtr<TERender> copy = render->CloneRender();
    (void)copy;
    return 0;
}
