#pragma once

#include <QString>
#include <QStringList>

namespace desk {

/// The house's caption of message boxes.
inline constexpr auto MessageCaption = u"پیغام";

/// Messages of the catalogue beside the ones that modules know by number (host::message): the fixed templates of the
/// message service and the desk's own.
namespace message {
inline constexpr int RequiredField = 1;      ///< %1: field
inline constexpr int RepeatedField = 2;      ///< %1: field, %2: kind of record
inline constexpr int RepeatedCode = 3;       ///< %1: field
inline constexpr int NotZero = 4;            ///< %1: field
inline constexpr int Percent = 5;            ///< %1: field
inline constexpr int NotSaveable = 6;        ///< %1: parent, %2: child
inline constexpr int HasSubRecords = 7;      ///< %1: what, %2: where
inline constexpr int DeleteRow = 8;          ///< question
inline constexpr int DeleteItem = 9;         ///< question; %1: what
inline constexpr int ContinueRepeated = 10;  ///< question; %1: field
inline constexpr int Completed = 11;         ///< %1: what
inline constexpr int NoRight = 20;           ///< %1: permission, %2: software part
inline constexpr int NoRightTo = 21;         ///< %1: what is refused
inline constexpr int InUse = 22;             ///< %1: the entity, %2: what uses it
inline constexpr int RootGroup = 23;         ///< the root group is fixed
inline constexpr int VoucherApproved = 24;   ///< %1: what is refused, %2: voucher title
inline constexpr int TotalOutOfRange = 25;   ///< quantity × price too large
inline constexpr int StockWouldBeMinus = 26; ///< %1: good, %2: store, %3: stock, %4: change
inline constexpr int EntityGone = 27;        ///< %1: the entity
inline constexpr int DatabaseFailed = 28;    ///< %1: the driver's words
inline constexpr int NoSuchUser = 29;        ///< %1: user code
inline constexpr int CollationLoses = 30;    ///< warning on connecting
inline constexpr int ModuleMissing = 31;     ///< %1: the loader's words
inline constexpr int CodeOutOfRange = 32;    ///< %1: lowest, %2: highest code
inline constexpr int NotAPicture = 33;       ///< %1: file name, or what was copied
inline constexpr int DiscardChanges = 34;    ///< question
inline constexpr int CannotOpen = 36;        ///< %1: database, %2: the driver's words
inline constexpr int AnotherSchema = 37;     ///< %1: database, %2: the driver's words
inline constexpr int NotWritable = 38;       ///< %1: file or folder
inline constexpr int CategoryCircle = 39;    ///< %1: category that was to stand under itself
inline constexpr int CategoryHasGoods = 40;  ///< %1: category that was to get a branch, %2: number of goods
inline constexpr int CategoryHandsOver = 41; ///< question; %1: category, %2: number of goods
inline constexpr int CategoryTooDeep = 42;   ///< %1: category
inline constexpr int DatabaseSilent = 35;    ///< in the status line; %1: the driver's words
// Documents
inline constexpr int DocumentChanged = 43;  ///< %1: title of the document
inline constexpr int DocumentAnswered = 44; ///< %1: title, %2: titles of the returns
inline constexpr int ReturnedBeyond = 45;   ///< %1: good, %2: title, %3: moved, %4: titles of the returns, %5: returned
inline constexpr int StockMinusOnDay = 46;  ///< %1: good, %2: store, %3: day, %4: stock of that day
inline constexpr int DetailsMissing = 47;   ///< %1: good
inline constexpr int DetailGone = 48;       ///< %1: detail, %2: store
inline constexpr int DetailTaken = 49;      ///< %1: detail, %2: store, %3: title of who took it
inline constexpr int DetailRepeated = 50;   ///< %1: detail, %2: title of who brought it
inline constexpr int DetailNotOfDocument = 51; ///< %1: detail, %2: title of the document that is answered
inline constexpr int DetailReturned = 52;      ///< %1: detail, %2: title of the return
inline constexpr int MoreRefusals = 53;        ///< %1: how many
inline constexpr int ScanUnknown = 54;         ///< %1: what was scanned
inline constexpr int ScanNotInStore = 55;      ///< %1: serial or barcode, %2: good, %3: store
inline constexpr int ScanTwice = 56;           ///< %1: serial or barcode
inline constexpr int ScanNotSold = 57;         ///< %1: serial or barcode
inline constexpr int DocumentWithoutLines = 58;
inline constexpr int LineWithoutAmount = 59; ///< %1: good
inline constexpr int SameStores = 60;
inline constexpr int NoSuchDocument = 61;    ///< %1: title
inline constexpr int BeforeAnswered = 62;    ///< %1: title of the document that is answered, %2: its date
inline constexpr int DetailsNotKept = 63;    ///< the setting of details is off
inline constexpr int DetailsDecide = 64;     ///< the quantity of a good with details comes from them
inline constexpr int NoHistory = 65;         ///< %1: serial or barcode
inline constexpr int ScanPending = 66;       ///< %1: what stands in the field for goods
inline constexpr int DatedAfterReturn = 67;  ///< %1: title, %2: its new date, %3: titles of the returns before it
inline constexpr int GiveUpDetails = 68;     ///< question: the store changes, and the chosen details are not there
inline constexpr int DetailsSettingOff = 69; ///< %1: good whose line has details in the ledger
// Copies of the database
inline constexpr int NoBackupOfServer = 80;
inline constexpr int DatabaseInUse = 81;   ///< %1: file
inline constexpr int RestoreDatabase = 82; ///< question; %1: file of the copy
inline constexpr int Restored = 83;        ///< %1: file that keeps what was replaced
// Databases of other versions
inline constexpr int StrangeColumns = 84;    ///< %1: tables and columns; the second parameter of AnotherSchema
inline constexpr int LaterDatabase = 85;     ///< %1: database
inline constexpr int EarlierDatabase = 86;   ///< question; %1: database, %2: file that the copy goes to
inline constexpr int EarlierOnServer = 87;   ///< question; %1: database
inline constexpr int EarlierUnattended = 88; ///< %1: database
inline constexpr int NotUpgraded = 89;       ///< %1: the driver's words
} // namespace message

/// The text of a message with its parameters in place. A number that is not in the catalogue gives a text that names
/// it, so that nothing is refused in silence.
QString MessageText(int number, const QStringList &parameters = {});

} // namespace desk
