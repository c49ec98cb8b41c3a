// Machines whose documents say what their triggers, actions and hooks do; all of them write what
// happens into one log.

#include "fsm/KvFSM.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "fsm/KvAction.h"
#include "fsm/KvFSMManager.h"
#include "fsm/KvFSMState.h"
#include "fsm/KvFSMStateTransition.h"
#include "fsm/KvTrigger.h"
#include "tests/scripttree/KvAllocationWatch.h"
#include "tests/scripttree/KvTreeText.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

const std::string kStates = "<s name='a'/><s name='b'/><s name='c'/>";

/// Default state a; the transitions stand before the states that they name.
std::string Document(const std::string& states, const std::string& transitions)
{
    return "<fsm><state_transition_list>" + transitions + "</state_transition_list><state_list>" +
           states + "</state_list><default_state name='A'/></fsm>";
}

/// Each action is a command, as is a trigger other than "yes", which does not fire.
std::string From(const std::string& in, const std::string& out, const std::string& trigger,
                 const std::vector<std::string>& actions = {})
{
    std::string text = "<t in='" + in + "' out='" + out + "' trigger='" + trigger + "'>";
    for (const std::string& action : actions)
        text += "<action do='" + action + "'/><other/>";
    return text + "</t>";
}

const char* Read(const CKvScriptTreeNode& node)
{
    return node.GetAttributeValueAsString(Id("do")).GetText();
}

std::string Name(const CKvFSMState* state)
{
    return state != nullptr ? state->GetIdentifier().DebugString().GetText() : "none";
}

class KvFSMTest : public ::testing::Test
{
public:
    void Run(const std::string& command)
    {
        if (command.starts_with("go "))
            machine->ChangeState(machine->FindState(Id(command.substr(3).c_str())));
        else if (command == "release")
            machine->Release();
        else if (command == "destroy")
            machine.reset();
        else if (command == "load")
            Load("<fsm><state_list><s name='d'/></state_list><default_state name='d'/></fsm>");
    }

    void Load(const std::string& document)
    {
        CParsedTree tree(document.c_str());
        EXPECT_TRUE(machine->LoadFromStream(tree));
    }

    std::string log;
    int alive = 0;
    std::unique_ptr<CKvFSM> machine = NewMachine();

protected:
    std::unique_ptr<CKvFSM> NewMachine();
};

/// What the loader makes: counted, so that a leak shows without a sanitizer too.
struct CPart
{
    CPart(KvFSMTest& owner, const char* text) : test(owner), command(text) { ++test.alive; }
    ~CPart() { --test.alive; }
    KvFSMTest& test;
    std::string command;
};

/// Runs its command in the hook that it names, and uses itself afterwards.
struct CTestState : CPart, CKvFSMState
{
    CTestState(KvFSMTest& owner, const char* text)
        : CPart(owner, text), CKvFSMState(CKvIdentifier(), nullptr)
    {
    }
    void OnEnter() override { Log('+'); }
    void OnUpdate(float dt) override
    {
        if (command[0] == '~')
            Log('~');
        CKvFSMState::OnUpdate(dt);
    }
    void OnLeave() override { Log('-'); }
    void Log(char hook)
    {
        test.log.append(1, hook).append(Name(this));
        test.Run(command[0] == hook ? command.substr(1) : "");
        test.log.append(command[0] == hook ? "." : "");
    }
};

struct CTestTrigger : CPart, CKvTrigger
{
    CTestTrigger(KvFSMTest& owner, const char* text) : CPart(owner, text), CKvTrigger(text) {}
    void Initialize(CKvScriptTreeNode* node) override
    {
        test.Run(Read(*node));
        test.log.append(Read(*node)).append(command, command.size());  // still there
    }
    bool IsTriggered() override
    {
        test.Run(command);
        return GetTriggerString() == "yes";
    }
};

struct CTestAction : CPart, CKvAction
{
    using CPart::CPart;
    void Execute() override
    {
        test.Run(command);
        test.log.append("!").append(command);
    }
};

std::unique_ptr<CKvFSM> KvFSMTest::NewMachine()
{
    auto made = std::make_unique<CKvFSM>();
    CKvFSMFactories factories;
    factories.state = [this](CKvScriptTreeNode& node, CKvFSM&) {
        return std::make_unique<CTestState>(*this, Read(node));
    };
    factories.trigger = [this](const TKvString<char>& text, CKvScriptTreeNode&) {
        return text.IsEmpty() ? nullptr : std::make_unique<CTestTrigger>(*this, text.GetText());
    };
    factories.action = [this](CKvScriptTreeNode& node) {
        return std::make_unique<CTestAction>(*this, Read(node));
    };
    made->SetFactories(factories);
    return made;
}

TEST_F(KvFSMTest, OneUpdateFiresOneTransitionWhateverItsHooksDo)
{
    const struct
    {
        std::string states, transitions, log, current;
    } rows[] = {
        {"", From("a", "b", "no") + From("a", "c", "yes", {"x", "y"}), "+a!x!y-a+c", "c"},
        {"", From("a", "b", "yes") + From("a", "c", "yes") + From("b", "c", "yes"), "+a-a+b", "b"},
        {"", From("A", "a", "yes"), "+a-a+a", "a"},
        {"", From("a", "z", "yes") + From("z", "b", "yes") + From("a", "b", ""), "+a", "a"},
        {"", From("a", "b", "yes", {"go c", "x"}), "+a-a+c!go c!x-c+b", "b"},
        {"", From("a", "b", "yes", {"load"}), "+a-a+d!load-d+b", "b"},
        {"", From("a", "b", "yes", {"release", "x"}), "+a!release!x", "none"},
        {"", From("a", "b", "yes", {"destroy", "x"}), "+a!destroy!x", "gone"},
        {"", From("a", "b", "release") + From("a", "b", "yes", {"x"}), "+a!x", "none"},
        {"", From("a", "b", "yes' do='release"), "release", "none"},
        {"", From("a", "b", "yes' do='destroy") + From("a", "b", "yes' do='x"), "destroy", "gone"},
        {"<s name='a' do='~release'/>", From("a", "b", "yes"), "+a~a.", "none"},
        {"<s name='b' do='+go c'/>", From("a", "b", "yes"), "+a-a+b-b+c.", "c"},
        {"<s name='a' do='+destroy'/>", "", "+a.", "gone"},
        {"<s name='a' do='-go c'/>", From("a", "b", "yes"), "+a-a+c.", "c"},
        {"<s name='a' do='-release'/>", From("a", "b", "yes"), "+a-a.", "none"},
        {"<s name='a' do='-destroy'/>", From("a", "b", "yes"), "+a-a.", "gone"},
    };
    for (const auto& row : rows) {
        log.clear();
        machine = NewMachine();
        EXPECT_EQ(alive, 0);
        Load(Document(row.states + kStates, row.transitions));
        if (machine != nullptr)
            machine->Update(0);
        EXPECT_EQ(log, row.log) << row.states << row.transitions;
        EXPECT_EQ(machine ? Name(machine->GetCurrentState()) : "gone", row.current) << row.log;
    }
}

TEST_F(KvFSMTest, DocumentsMayLackAndRepeatEachNode)
{
    const std::pair<std::string, const char*> rows[] = {
        {"<a><fsm/></a>", "refused"},
        {"<FSM/>", "> none"},
        {"<fsm><other/><state_list><x name='a'><y/></x><y/></state_list></fsm>", "a  > none"},
        {"<fsm><default_state name='a'/><state_list><s name='a'/></state_list></fsm>", "a > none"},
        {Document("<s name='a'/>", From("a", "a", "yes")), "a > a"},
        {"<fsm><state_list><s name='a'/></state_list><default_state name='A'/><state_list>"
         "<s name='b'/><s name='a'/></state_list><default_state name='b'/><default_state/></fsm>",
         "a b a > b"},
    };
    for (const auto& [document, expected] : rows) {
        CKvFSM plain;
        CParsedTree tree(document.c_str());
        const bool isLoaded = plain.LoadFromStream(tree);
        std::string states;
        for (int i = 0; i < plain.GetStateCount(); ++i) {
            states.append(Name(plain.GetState(i))).append(" ");
            EXPECT_EQ(plain.GetState(i)->GetStateTransitionCount(), 0);
        }
        states.append("> ").append(Name(plain.GetCurrentState()));
        EXPECT_EQ(isLoaded ? states : "refused", expected) << document;
    }
    CKvScriptTree empty;
    EXPECT_FALSE(CKvFSM().LoadFromStream(empty));

    const CKvTemporaryFolder folder;
    const TKvString<char> path = folder.Write("a.fsm", Document(kStates, "")).c_str();
    EXPECT_TRUE(machine->Initialize(path) && machine->Initialize(path));  // the second appends
    EXPECT_FALSE(machine->Initialize(folder.Path("none.fsm").c_str()) || machine->Save());
    EXPECT_EQ(machine->GetStateCount(), 6);
    EXPECT_EQ(log, "+a-a+a");
}

TEST_F(KvFSMTest, ALoadWithoutMemoryFailsAndLeaksNothing)
{
    Load(Document(kStates, From("a", "b", "yes", {"x"})));  // all names are known from now on
    CParsedTree tree(Document(kStates, From("a", "b", "yes", {"x"})).c_str());
    log.reserve(1000);
    int failing = 0;
    for (bool isLoaded = false; !isLoaded; ++failing) {
        auto fresh = NewMachine();
        CKvAllocationWatch watch(failing + 1);
        isLoaded = fresh->LoadFromStream(tree);
        EXPECT_NE(isLoaded, watch.HasFailed());
        fresh.reset();
        EXPECT_EQ(watch.Stop(), 0) << failing;
    }
    EXPECT_GT(failing, 10);
}

TEST_F(KvFSMTest, CopiesShareStatesUntilTheLastLetsGo)
{
    Load(Document(kStates, From("a", "b", "yes") + From("b", "c", "yes")));
    CKvFSMState* const a = machine->GetState(0);
    const int held = alive;
    std::vector<CKvFSM> copies(1, *machine);
    CKvFSM spare(copies[0]);
    copies[0].Update(0);  // the machine that the states belong to changes
    EXPECT_EQ(Name(machine->GetCurrentState()) + Name(copies[0].GetCurrentState()), "ba");
    CKvFSMState* const own = copies[0].CreateState("own");
    EXPECT_EQ(machine->GetStateCount(), 3);

    *machine = spare;
    machine->AddState(a);  // listed twice, held once
    EXPECT_EQ(a->GetFSM(), machine.get());
    machine->Release();
    copies.resize(20);  // moves: the older copy gets nothing
    copies[0].Update(0);
    EXPECT_EQ(Name(copies[0].GetCurrentState()), "b");

    CKvFSM stranger;
    stranger.AddState(a);
    EXPECT_EQ(stranger.GetStateCount(), 0);
    stranger.CreateState("strange");
    copies[1] = copies[0];
    copies[0] = stranger;
    EXPECT_TRUE(a->GetFSM() == &spare && own->GetFSM() == &copies[1]);
    copies[1].Release();
    EXPECT_TRUE(own->GetFSM() == nullptr && copies[0].GetState(0)->GetFSM() == &stranger);
    spare.AddState(own);
    EXPECT_TRUE(own->GetFSM() == &spare && alive == held);
    spare.Release();
    EXPECT_EQ(alive, 0);
}

TEST_F(KvFSMTest, WhatTheProgramMadeStaysThePrograms)
{
    CTestTrigger yes(*this, "yes");
    CTestAction say(*this, "x");
    CKvArray<CKvAction*> actions;
    actions.Add(nullptr);
    actions.Add(&say);
    CKvFSM other;
    CKvFSMState* const a = machine->CreateState("a");
    CKvFSMState* const b = machine->CreateState("b");
    CKvFSMStateTransition never(b, a, nullptr, actions, 0);
    CKvFSMStateTransition leads(other.CreateState("b"), a, &yes, actions, 0);
    a->AddStateTransition(nullptr);
    a->AddStateTransition(&never);
    a->AddStateTransition(&leads);
    machine->Update(0);  // no current state
    machine->ChangeState(a);
    machine->Update(0);  // to a state of another machine
    EXPECT_EQ(machine->GetCurrentState(), a);
    leads.SetReachableState(b);
    EXPECT_TRUE(CKvFSMStateTransition(leads).CheckTrigger());
    EXPECT_EQ(machine->GetCurrentState(), b);
    EXPECT_TRUE(CKvFSMStateTransition(a, nullptr, &yes, actions, 0).CheckTrigger());

    CKvFSMState loose(*a);
    *other.GetState(0) = loose;  // stays with its machine
    EXPECT_EQ(other.GetState(0)->GetFSM(), &other);
    loose = *other.GetState(0);
    EXPECT_EQ(loose.GetFSM(), &other);
    EXPECT_EQ(loose.GetStateTransitionCount(), 3);
    CTestAction release(*this, "release");
    actions.Add(&release);
    EXPECT_TRUE(CKvFSMStateTransition(b, a, &yes, actions, 0).CheckTrigger());
    EXPECT_EQ(log, "!x!x!x!x!release");

    CKvFSMManager manager;
    for (CKvFSM* fsm : {machine.get(), &other, machine.get()})
        manager.AddFSM(fsm);
    manager.RemoveFSM(machine.get());
    manager.RemoveFSM(machine.get());
    EXPECT_EQ(manager.GetFSMCount(), 1);
}

TEST_F(KvFSMTest, TransitionsAreSortedByDescendingPriority)
{
    const int priorities[] = {5, -1, 9, 0, 5, -7, INT_MIN, 0, -1, INT_MAX};
    const unsigned sorted[] = {9, 2, 0, 4, 3, 7, 1, 8, 5, 6};  // indices into the above
    std::vector<CKvFSMStateTransition> transitions;
    for (const int priority : priorities)
        transitions.emplace_back(nullptr, nullptr, nullptr, CKvArray<CKvAction*>(), priority);
    CKvFSMState state(Id("a"), nullptr);
    state.AddStateTransition(nullptr);
    CKvArray<CKvFSMStateTransition*> left;
    for (auto& transition : transitions) {
        state.AddStateTransition(&transition);
        left.Add(&transition);
    }
    state.SortTransition();
    for (int i = 0; i < 10; ++i) {
        auto* const expected = &transitions[sorted[i]];
        EXPECT_EQ(state.GetStateTransition(i), expected) << i;
        EXPECT_EQ(state.GetMaxPriority(left), i < 6 ? expected : nullptr) << i;
        std::replace(left.begin(), left.end(), expected,
                     static_cast<CKvFSMStateTransition*>(nullptr));
    }
    EXPECT_EQ(state.GetStateTransition(10), nullptr);
}

}  // namespace
