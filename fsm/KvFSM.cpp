#include "fsm/KvFSM.h"

#include <algorithm>
#include <utility>

#include "core/KvEntryAt.h"
#include "core/KvIdentifier.h"
#include "fsm/KvFSMContents.h"

CKvFSM::CKvFSM() = default;

CKvFSM::CKvFSM(const CKvFSM& other)
    : m_defaultState(other.m_defaultState),
      m_currentState(other.m_currentState),
      m_states(other.m_states),
      m_contents(other.m_contents),
      m_factories(other.m_factories)
{
    if (m_contents != nullptr)
        m_contents->Join(this);
}

CKvFSM& CKvFSM::operator=(const CKvFSM& other)
{
    if (this == &other)
        return *this;
    // All that can fail comes before anything is given up.
    CKvArray<CKvFSMState*> states = other.m_states;
    CKvFSMFactories factories = other.m_factories;
    if (m_contents != other.m_contents) {
        if (other.m_contents != nullptr)
            other.m_contents->Join(this);
        Release();
        m_contents = other.m_contents;
    }
    m_defaultState = other.m_defaultState;
    m_currentState = other.m_currentState;
    m_states = std::move(states);
    m_isLeaving = false;
    m_factories = std::move(factories);
    return *this;
}

CKvFSM::CKvFSM(CKvFSM&& other) noexcept
{
    TakeFrom(other);
}

CKvFSM& CKvFSM::operator=(CKvFSM&& other) noexcept
{
    if (this != &other) {
        Release();
        TakeFrom(other);
    }
    return *this;
}

CKvFSM::~CKvFSM()
{
    Release();
}

bool CKvFSM::Save()
{
    return false;
}

void CKvFSM::Release()
{
    m_defaultState = nullptr;
    m_currentState = nullptr;
    m_isLeaving = false;
    while (!m_states.IsEmpty())  // unlike Clear() this keeps the storage
        m_states.RemoveLast();
    const std::shared_ptr<CKvFSMContents> contents = std::exchange(m_contents, nullptr);
    if (contents != nullptr)
        contents->Leave(this);
}

CKvFSMState* CKvFSM::CreateState(const TKvString<char>& name)
{
    auto state = std::make_unique<CKvFSMState>(CKvIdentifier(name), this);
    AddState(state.get());
    return state.release();
}

void CKvFSM::AddState(CKvFSMState* state)
{
    if (state == nullptr || !GetContents().MayHold(*state))
        return;
    m_contents->ReserveState();
    m_states.Add(state);
    m_contents->Hold(state, this);
}

CKvFSMState* CKvFSM::GetState(int index) const
{
    return KvEntryAt(m_states, index);
}

CKvFSMState* CKvFSM::FindState(const CKvIdentifier& identifier) const
{
    for (CKvFSMState* state : m_states) {
        if (state->GetIdentifier() == identifier)
            return state;
    }
    return nullptr;
}

void CKvFSM::ChangeState(CKvFSMState* state)
{
    if (!Lists(state))
        return;
    const std::shared_ptr<CKvFSMContents> contents = m_contents;
    if (m_currentState != nullptr && !m_isLeaving) {
        m_isLeaving = true;
        m_currentState->OnLeave();
        // The hook may have released or destroyed this machine, or changed its state itself.
        if (!contents->IsSharedBy(this) || !m_isLeaving)
            return;
    }
    m_isLeaving = false;
    m_currentState = state;
    state->OnEnter();
}

void CKvFSM::Update(float dt)
{
    if (m_currentState == nullptr)
        return;
    const std::shared_ptr<CKvFSMContents> contents = m_contents;
    m_currentState->OnUpdate(dt);
}

bool CKvFSM::Lists(const CKvFSMState* state) const
{
    return std::find(m_states.begin(), m_states.end(), state) != m_states.end();
}

CKvFSMContents& CKvFSM::GetContents()
{
    if (m_contents == nullptr) {
        auto contents = std::make_shared<CKvFSMContents>();
        contents->Join(this);
        m_contents = std::move(contents);
    }
    return *m_contents;
}

/// For a machine that has just been made or released.
void CKvFSM::TakeFrom(CKvFSM& other) noexcept
{
    m_defaultState = std::exchange(other.m_defaultState, nullptr);
    m_currentState = std::exchange(other.m_currentState, nullptr);
    m_states = std::move(other.m_states);
    m_contents = std::exchange(other.m_contents, nullptr);
    other.m_isLeaving = false;
    m_factories = std::exchange(other.m_factories, {});
    if (m_contents != nullptr)
        m_contents->Replace(&other, this);
}
