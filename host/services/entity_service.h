#pragma once

#include "host/services/types.h"

#include <QList>

#include <optional>

namespace host {

/// One row of a code-and-name list (a unit, a store, a goods group).
struct Entity
{
    int Code = 0;
    QString Name;
};

/// What a choice of several has to fit to.
struct MultibleParam
{
    QString ExcludedCodes = {}; ///< a code list of what is not offered
    // Of detail types only:
    int PreviousCount = 0;      ///< how many the owner has already
    QString PreviousCodes = {}; ///< their codes, a code list
    bool InList = false;        ///< the owner is a category of detail types; otherwise a good
    bool Categories = false;    ///< a whole category may be chosen as well
};

/// The generic lists of the suite: groups (122), stores (105), units (104), and the removal of any entity.
/// Choosers and editors are modal windows of the host.
class EntityService
{
public:
    virtual ~EntityService() = default;

    /// Opens the list of a part for browsing; the host's own result.
    virtual int Call_GroupList(TSoftwarePart part) = 0;
    /// Opens the list for choosing, `text` being its opening text (a code or a part of a name to stand on);
    /// the chosen code, 0 when nothing was chosen.
    virtual int Select_GroupList(TSoftwarePart part, const QString &text) = 0;
    /// Opens the editor on one item; true when it was saved.
    virtual bool Edit_Group(TSoftwarePart part, int id) = 0;
    /// Opens the editor for a new item; its code, 0 when it was not saved.
    virtual int New_Group(TSoftwarePart part) = 0;
    /// Removes an entity of any kind, goods included, when nothing uses it; 0 when it was removed. The service
    /// owns the rules that refuse, asks for confirmation unless `silent`, and tells the user why it refuses.
    virtual int Delete_Entity(TSoftwarePart part, int code, bool silent) = 0;
    /// The rules that refuse as a condition of a statement: something uses the entity whose code stands in the column
    /// `code`. For those who remove many at once; nobody is told.
    virtual QString InUse(TSoftwarePart part, const QString &code) const = 0;
    /// Opens a list for choosing several; the chosen codes, each followed by a comma, empty when none. Detail types
    /// (513) are chosen on the list of the goods module, through its `Select_DetailTypes_Multible`.
    virtual QString Select_Entity_Multible_Param(TSoftwarePart part, const MultibleParam &wanted) = 0;

    /// The item with this code, for pickers that echo the name of a typed code.
    virtual std::optional<Entity> Find(TSoftwarePart part, int code) = 0;
    /// The items whose name contains `text`, folded as people type it; all of them for an empty text.
    virtual QList<Entity> List(TSoftwarePart part, const QString &text) = 0;

    /// Keeps `code` for this desk so that others do not propose it (`CodeLock_TBL`); false when another desk has it.
    virtual bool ReserveCode(TSoftwarePart part, int code) = 0;
    /// Gives back every code that this desk reserved in `part`.
    virtual void ReleaseCodes(TSoftwarePart part) = 0;
    /// Gives back what desks that ended without doing so had reserved in any part, with the working rows that stand
    /// under it.
    virtual void ReleaseAbandonedCodes() = 0;
};

} // namespace host
