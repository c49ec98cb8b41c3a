#include "tool/TemplateObject.h"

#include <new>
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

CTemplateObject::~CTemplateObject()
{
    if (subObjects.IsEmpty())
        return;
    try {
        std::vector<CKvArray<CTemplateObject>> pending;
        pending.push_back(std::move(subObjects));
        while (!pending.empty()) {
            CKvArray<CTemplateObject> objects = std::move(pending.back());
            pending.pop_back();
            for (CTemplateObject& object : objects) {
                if (!object.subObjects.IsEmpty())
                    pending.push_back(std::move(object.subObjects));
            }
        }
    } catch (const std::bad_alloc&) {
        // Without memory for the list, what is left is destroyed level by level on the stack.
    }
}
