#include "tool/TemplateReader.h"

#include <gtest/gtest.h>

#include "core/KvId.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "tests/support/KvSmallStack.h"
#include "tool/GameRules.h"

namespace {

TEST(TemplateReaderTest, AMillionNestedSubObjectsNeedNoStack)
{
    KvRunOnSmallStack([] {
        const KVID& id = KVID::GetSingleton();
        CKvScriptTree document;
        CKvScriptTreeNode* const root = document.CreateRootNode(id.template_list);
        CKvScriptTreeNode* node = root->AddNewChild(id.template_);
        node->AddAttribute({id.name, "deep"});
        for (std::int64_t i = 0; i < CTemplateList::kMaxContent; ++i)
            node = node->AddNewChild(id.sub_object);
        CTemplateList templates;
        ASSERT_TRUE(ReadTemplateList(*root, templates));

        CKvScriptTreeNode* const rule = root->AddNewChild(id.simple_fsm_create);
        rule->AddNewChild(id.template_)->AddAttribute({id.name, "deep"});
        rule->AddChild(root->GetChild(0)->GetChild(0));
        root->GetChild(0)->RemoveChild(0);
        CFSMInstanceLists instances;
        ASSERT_TRUE(ResolveGameRules(*root, {}, templates, instances));
        for (int i = 0; i < 2; ++i) {
            int depth = 0;
            const CTemplateObject* object = &instances.global[0]->subObjects[i];
            for (; !object->subObjects.IsEmpty(); object = &object->subObjects[0])
                ++depth;
            EXPECT_EQ(depth + 1, CTemplateList::kMaxContent);
        }
    });
}

}  // namespace
