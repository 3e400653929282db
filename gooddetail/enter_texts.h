#pragma once

#include "host/services/serial_batch_service.h"

/// What the enter screen says.
namespace good_detail::texts {

using namespace Qt::StringLiterals;

inline const QString SerialOfOtherGood = u"کاربر گرامی سریال فوق در لیست سریال های کالای دیگری ثبت شده است."_s;
inline const QString BarcodeOfOtherGood = u"کاربر گرامی بارکد فوق در لیست بارکدهای کالای دیگری ثبت شده است."_s;
inline const QString BarcodeOfOtherDetails = u"کاربر گرامی بارکد فوق برای جزییات کالای دیگری ثبت شده است."_s;
inline const QString OperationBarcode = u"کاربر گرامی بارکد فوق در بارکدهای عملیاتی استفاده شده است."_s;
inline const QString NoDetailValue = u"ثبت ترکیب برای این جزییات با مشکل مواجه شده است"_s;
inline const QString MoreThanReturnable = u"کاربر گرامی مقدار وارد شده بیشتر از مقدار قابل برگشت می باشد."_s;
inline const QString SecondMoreThanReturnable = u"کاربر گرامی مقدار2 وارد شده بیشتر از مقدار2 قابل برگشت می باشد."_s;
inline const QString CountMoreThanReturnable = u"کاربر گرامی تعداد وارد شده بیشتر از تعداد قابل برگشت می باشد."_s;
inline const QString NotSold = u"کاربر گرامی با این مقادیر جزییاتی که وارد کرده اید هیچ جزییاتی به فروش نرسیده است"_s;
inline const QString OtherCombination =
    u"کاربر گرامی سریال فوق به جزییات دیگری اختصاص داده شده است لطفا سریال جدید وارد نمایید"_s;
inline const QString OnceOnDocument =
    u"کاربر گرامی جزییات وارد شده با این سریال یک بار ثبت شده است لطفا سریال دیگری وارد نمایید"_s;
inline const QString NotReturnable =
    u"کاربر گرامی با سریال وارد شده امکان برگشت جزییات وجود ندارد لطفا برای برگشت این جزییات سریال جدید وارد نمایید"_s;
inline const QString SoldAmountNeeded =
    u"کاربر گرامی برای برگشت زدن جزییات وارد شده با سریال فوق باید مقدار فروخته شده را وارد نمایید در غیر اینصورت سریال جدید وارد نمایید"_s;
inline const QString MoreThanOnHand = u"کاربر گرامی مقدار وارد شده برای این جزییات بیشتر از موجودی می باشد"_s;
inline const QString NothingOnHand = u"کاربر گرامی با این جزییات وارد شده موجودی نداریم"_s;
inline const QString SerialInStock = u"کاربر گرامی با این سریال جزییاتی ثبت شده است لطفا بررسی نمایید  "_s;
inline const QString SerialInLine = u"این سریال در همین لیست ثبت شده است"_s;
inline const QString ReturnedNotDeleted = u"کاربر گرامی جزییات فوق برگشت  خورده و قابل حذف  نمی باشد"_s;
inline const QString ReturnedNotEdited = u"کاربر گرامی جزییات فوق برگشت  خورده و قابل ویرایش نمی باشد"_s;
inline const QString LeftAreReturned = u"موارد حذف نشده برگشت خورده و قابل حذف نمی باشند"_s;
inline const QString RowNotStored = u"کاربر گرامی سطر وارد شده هنوز ثبت نشده است."_s;
inline const QString AllRows = u"همه سطرهاي"_s;

inline const QString RangeTaken = u"امکان اضافه شدن مجدد سریال(های) زیر به علت تکراری بودن وجود ندارد"_s;
inline const QString RangeConflicts =
    u"امکان اضافه شدن مجدد سریال(های) زیر به علت ثبت این سریال(ها) با مقادیر دیگر وجود ندارد"_s;
inline const QString RangeNotReturned = u"امکان برگشت سریال(های) زیر به علت مشکل دار بودن وجود ندارد"_s;
inline const QString Generating = u"سیستم در حال تولید سریال می باشد"_s;
inline const QString RangeNoNumbers = u"کاربر گرامی ابتدا و انتهای محدوده سریال باید عدد باشند."_s;
inline const QString RangeTooLong = u"کاربر گرامی محدوده سریال نمی تواند بیشتر از 100,000 سریال باشد."_s;
inline const QString RangeEmpty = u"در این محدوده سریالی نیست"_s;
inline const QString RangeGivenUp = u"تولید سریال لغو شد و سریالی اضافه نشد"_s;

/// Why a single serial is refused.
inline QString Fate(host::TSerialFate fate, bool isReturn)
{
    using host::TSerialFate;
    switch (fate) {
    case TSerialFate::InLine:
        return isReturn ? OnceOnDocument : SerialInLine;
    case TSerialFate::InStock:
        return SerialInStock;
    case TSerialFate::OtherValues:
        return OtherCombination;
    case TSerialFate::NotSold:
        return NotSold;
    case TSerialFate::NotReturnable:
        return NotReturnable;
    case TSerialFate::NothingOnHand:
        return NothingOnHand;
    case TSerialFate::NotSoldAmount:
        return SoldAmountNeeded;
    case TSerialFate::MoreThanOnHand:
        return MoreThanOnHand;
    case TSerialFate::Known:
    case TSerialFate::New:
        break;
    }
    return {};
}

} // namespace good_detail::texts
