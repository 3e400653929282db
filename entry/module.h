#pragma once

#include "detailtypes/detail_type_choice.h"
#include "gooddetail/detail_line.h"
#include "gooddetail/opening_texts.h"
#include "host/host.h"

#include <QPointer>

#include <array>
#include <exception>
#include <functional>
#include <memory>
#include <type_traits>

class TDetailTypes_List_FRM;
class TGood_List_FRM;
class TGood_Get_FRM;

namespace entry {

/// What stands behind the exported functions: the screens that live as long as the module. The goods list has two
/// browse slots and three selection slots, so that a choice can be made while another one is open; the good editor has
/// one. Slots are filled on first use and kept, with their grids and filters, for the next call.
class Module
{
public:
    explicit Module(host::Host &host);
    ~Module();
    Module(const Module &) = delete;
    Module &operator=(const Module &) = delete;

    void OpenGoodList();
    /// The chosen code, 0 for none.
    int SelectGood(const QString &param);
    /// The chosen codes, each followed by a comma.
    QString SelectGoods(const QString &param);
    /// `kind` 2 opens for review.
    void CallGoodGet(int goodId, int kind);
    int EditGood(int value);

    /// Shows the list of detail types until it is closed.
    void OpenDetailTypes();
    /// The chosen codes, each followed by a comma.
    QString SelectDetailTypes(const QString &openingText, const detail_types::Choice &choice);

    /// What a screen of details made of a document's line.
    struct LineDetails
    {
        bool Opened = false;   ///< it did not give up while opening
        bool Accepted = false; ///< it was closed with OK
        good_detail::DetailLineResult Result;
    };
    /// Enters details. `mode` 2 opens anew, any other on the key; `wanted` is the exact quantity of the line that the
    /// opening text tells of.
    LineDetails EnterDetails(int mode, int key, const QString &openingText, host::Quantity wanted = 0);
    /// Chooses what goes out. `mode` 2 anew, 3 on the key, any other shows without changing.
    LineDetails ExitDetails(int mode, int key, const QString &openingText);
    /// The chosen detail values, each followed by a comma, or one of them as the select screen packs it.
    QString SelectGoodDetails(const QString &caption, const good_detail::SelectOpening &opening);

    /// Shows the list of divisions until it is closed; tells why when the settings leave nothing to divide.
    void OpenDivisions();
    /// Divides one unit on hand at once; true when the screen closed with OK.
    bool DivideDetail(const good_detail::DivisionItemsOpening &opening);

    /// The host's generic lists.
    int OpenList(host::TSoftwarePart part);
    int Select(host::TSoftwarePart part, const QString &text);
    void Edit(host::TSoftwarePart part, int id);

    /// Runs one exported function on the module of this process, made on first use for the installed host, and anew
    /// when another one is installed; screens that are open keep theirs. An exception ends here: the user sees it and
    /// the result is neutral.
    template <typename Function> static std::invoke_result_t<Function, Module &> Run(Function function) noexcept
    {
        using Result = std::invoke_result_t<Function, Module &>;
        try {
            return function(Instance());
        } catch (...) {
            Report(std::current_exception());
            return Result();
        }
    }

    /// Lets go of the module of this process and its screens; the next call makes it anew. Happens by itself when the
    /// application object or the library goes.
    static void Release();

private:
    static Module &Instance();
    /// One of its screens is open.
    bool IsShowing() const;
    static void Report(const std::exception_ptr &error) noexcept;

    bool MayOpenList(host::TSoftwarePart part);
    /// Null, having told the user, when all three are showing. `openingText` is for a list made now.
    TGood_List_FRM *FreeSelectionSlot(const QString &openingText);
    /// Null when the editor is showing already; it is brought to the front then.
    TGood_Get_FRM *FreeEditor();

    host::Host &m_host;
    /// Docked in the host's window, which takes them along when it goes first.
    std::array<QPointer<TGood_List_FRM>, 2> m_browse;
    std::array<std::unique_ptr<TGood_List_FRM>, 3> m_selection;
    std::unique_ptr<TGood_Get_FRM> m_editor;
    TDetailTypes_List_FRM *m_detailTypes = nullptr; ///< while it is showing
};

} // namespace entry
