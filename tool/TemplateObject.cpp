#include "tool/TemplateObject.h"

#include <utility>
#include <vector>

CTemplateObject::CTemplateObject(const CTemplateObject& other)
{
    struct CPending
    {
        const CTemplateObject* source;
        CTemplateObject* copy;
    };
    std::vector<CPending> pending = {{&other, this}};
    while (!pending.empty()) {
        const auto [source, copy] = pending.back();
        pending.pop_back();
        copy->name = source->name;
        copy->parameters = source->parameters;
        copy->subObjects.SetGrowthStep(source->subObjects.GetCount());
        for (int i = 0; i < source->subObjects.GetCount(); ++i)
            copy->subObjects.Add(CTemplateObject());
        for (int i = 0; i < source->subObjects.GetCount(); ++i)
            pending.push_back({&source->subObjects[i], &copy->subObjects[i]});
    }
}

CTemplateObject& CTemplateObject::operator=(const CTemplateObject& other)
{
    return *this = CTemplateObject(other);
}

CTemplateObject& CTemplateObject::operator=(CTemplateObject&& other) noexcept
{
    // Swapped, not moved member by member: the other's destructor then takes the old content apart.
    std::swap(name, other.name);
    std::swap(parameters, other.parameters);
    std::swap(subObjects, other.subObjects);
    return *this;
}

/// Takes the nested lists apart one by one, so that destroying needs neither stack nor memory. The
/// list that is left while another one is taken apart waits in that one's first leaf, which is
/// destroyed last.
CTemplateObject::~CTemplateObject()
{
    CKvArray<CTemplateObject> objects = std::move(subObjects);
    while (!objects.IsEmpty()) {
        CKvArray<CTemplateObject> nested = std::move(objects[objects.GetCount() - 1].subObjects);
        objects.RemoveLast();
        if (nested.IsEmpty())
            continue;
        if (!objects.IsEmpty()) {
            CTemplateObject* leaf = &nested[0];
            while (!leaf->subObjects.IsEmpty())
                leaf = &leaf->subObjects[0];
            leaf->subObjects = std::move(objects);
        }
        objects = std::move(nested);
    }
}
