#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace host {

/// Numbers of the host's message catalogue that the module uses.
namespace message {
inline constexpr int ItemInUse = 10006;             ///< %1: what is used somewhere and therefore stays
inline constexpr int OpeningPeriodClosed = 10020;   ///< %1: what is fixed, %2: what is therefore refused
inline constexpr int DeleteRefused = 10030;         ///< %1: the reason, ending in a comma
inline constexpr int SecondQuantityDiffers = 10052; ///< the second quantity does not follow from the first
inline constexpr int TooManyDigits = 10325;         ///< %1: what is numbered, %2: the digits allowed
inline constexpr int OpeningDetailsMissing = 10376; ///< the details of the opening quantity were not entered
inline constexpr int ReplaceTypedQuantity = 20114;  ///< asks: replace the quantity that was typed by hand?
inline constexpr int MoveDetailsToStore = 22205;    ///< asks: take the details of the row along to the other store?
} // namespace message

/// The icon of a plain message box.
enum class MessageIcon { Information, Warning, Error };

/// Everything a screen says to the user. The templates belong to the host: screens pass the Persian captions of their
/// fields. Messages are modal unless they say otherwise.
class MessageService
{
public:
    virtual ~MessageService() = default;

    /// A field must be filled.
    virtual void MsgRequiredField(const QString &caption) = 0;
    /// Another record of kind `entity` has the same `field`.
    virtual void MsgRepeatedField(const QString &field, const QString &entity) = 0;
    /// Another record has the same code.
    virtual void MsgRepeatedCode(const QString &caption) = 0;
    /// A number must not be zero.
    virtual void NotZeroValue(const QString &caption) = 0;
    /// A percent lies outside 0 … 100.
    virtual void MsgPercent(const QString &caption) = 0;
    /// `parent` cannot hold `child` records.
    virtual void NotSaveable(const QString &parent, const QString &child) = 0;
    /// `what` is already in use as `where`.
    virtual void MsgHasSubRecordsAnother(const QString &what, const QString &where) = 0;
    /// Confirmation; true means delete the current row.
    virtual bool MsgDeleteRow() = 0;
    /// Confirmation; true means delete `what`.
    virtual bool MsgDeleteItem(const QString &what) = 0;
    /// Confirmation; true means keep a value that another record has too.
    virtual bool ContinueWithRepeatedField(const QString &caption) = 0;
    /// `what` is done.
    virtual void MSGCompeletedSuccessfully(const QString &what) = 0;

    /// Message `number` of the catalogue with its parameters, beside `anchor`, not modal, gone after `milliseconds`.
    virtual void ShowSmartMessage(int number, const QStringList &parameters, int milliseconds, QWidget *anchor) = 0;
    /// Question `number` of the catalogue; true for Yes.
    virtual bool Confirm(int number, const QStringList &parameters) = 0;
    /// What message `number` of the catalogue says, for a text that has more to tell.
    virtual QString TextOf(int number, const QStringList &parameters) = 0;
    /// A short text over the main window, not modal, gone after `milliseconds`.
    virtual void ShowFlashMessage(const QString &text, int milliseconds) = 0;
    /// A plain message box, with the house's caption when `caption` is empty.
    virtual void ShowMessage(const QString &text, MessageIcon icon, const QString &caption = {}) = 0;
    /// A Yes/No question in a plain box; true for Yes. `defaultYes` says which button Enter presses.
    virtual bool Ask(const QString &text, bool defaultYes) = 0;
};

} // namespace host
