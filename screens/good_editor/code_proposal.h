#pragma once

#include "data/goods/good_dm.h"

/// The code of a good being created. It is reserved for this desk while the editor is open, because the working rows of
/// the good (prices, categories, photo) stand under it in tables that all desks share.
class CodeProposal
{
public:
    CodeProposal(host::Host &host, TGood_DM &data) : m_host(host), m_data(data) {}

    /// Proposes and reserves the first code of a new good; group 0 when none is chosen yet.
    int Begin(int group);
    /// Another group was chosen: proposes a code of it and moves the working rows there.
    int ChangeGroup(int group);
    /// The user typed a code: moves the working rows there. False, changing nothing, when the code is in use.
    bool TakeTyped(int code);
    /// Gives back what was reserved.
    void End();

    /// The code that the working rows stand under; 0 when no new good is open.
    int Current() const { return m_current; }
    /// The save had to take another code, and the working rows went with it.
    void Moved(int code) { m_current = code; }

private:
    int Propose(int group);

    host::Host &m_host;
    TGood_DM &m_data;
    int m_current = 0;
};
