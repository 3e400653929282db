-- The goods database: tables, keys and access paths, and the few rows without which no screen works.
-- Runs once on an empty database (SQL Server 2016 or later, or the embedded database).
--
-- Types used throughout:
--   quantities and percents  decimal(23,9)
--   prices and money         decimal(28,9), so that fifteen typed digits still fit
--   dates and times          text, "yyyy/mm/dd" in the calendar of the company and "hh:mm:ss"
--   tmp                      0 a saved row, anything else a row that an editor still open works on
--
-- A satellite table of goods has a foreign key to GoodInf only where its rows are written after the good.
-- Prices, opening stock and categories of a new good are written before it and therefore have none.

CREATE SCHEMA Market
GO

-- ---------------------------------------------------------------------------------------------------------
-- Company, users, settings
-- ---------------------------------------------------------------------------------------------------------

-- One row. DATE is the first day of the fiscal period: the date of opening stock and of its voucher.
CREATE TABLE inf_co (
    ID                int          NOT NULL CONSTRAINT PK_inf_co PRIMARY KEY,
    Name              nvarchar(100) NOT NULL,
    [DATE]            varchar(10)  NOT NULL,
    StartPeriodClosed bit          NOT NULL DEFAULT 0
)

-- ManageType 1: manager, sees every group of goods; 0: ordinary user.
CREATE TABLE Users (
    Code       int          NOT NULL CONSTRAINT PK_Users PRIMARY KEY,
    Name       nvarchar(50) NOT NULL,
    ManageType tinyint      NOT NULL DEFAULT 0
)

-- A row grants the right; no row refuses it.
CREATE TABLE UserRights (
    UserCode     int      NOT NULL,
    SoftwarePart smallint NOT NULL,
    Permission   smallint NOT NULL,
    CONSTRAINT PK_UserRights PRIMARY KEY (UserCode, SoftwarePart, Permission),
    CONSTRAINT FK_UserRights_Users FOREIGN KEY (UserCode) REFERENCES Users (Code) ON DELETE CASCADE
)

CREATE TABLE Settings (
    Name  varchar(60)   NOT NULL CONSTRAINT PK_Settings PRIMARY KEY,
    Value nvarchar(400) NOT NULL
)

-- What a user arranged on a screen: grid columns, widths, search choices.
CREATE TABLE ScreenLayouts (
    UserCode int           NOT NULL,
    Screen   nvarchar(100) NOT NULL,
    Layout   nvarchar(max) NOT NULL,
    CONSTRAINT PK_ScreenLayouts PRIMARY KEY (UserCode, Screen)
)

-- Codes that open editors have reserved. Status is the software part the code belongs to (102: goods).
-- The key makes two editors that reserve the same code at the same moment fail in one of them.
CREATE TABLE CodeLock_TBL (
    Status   smallint NOT NULL,
    Code     bigint   NOT NULL,
    UserCode int      NOT NULL DEFAULT 0,
    LockedAt datetime NOT NULL DEFAULT GETDATE(),
    CONSTRAINT PK_CodeLock_TBL PRIMARY KEY (Status, Code)
)

-- Document numbers in use, by kind of document.
CREATE TABLE Global_ID (
    Mode smallint NOT NULL,
    Code int      NOT NULL,
    CONSTRAINT PK_Global_ID PRIMARY KEY (Mode, Code)
)
GO

-- ---------------------------------------------------------------------------------------------------------
-- Groups, units, stores, titles
-- ---------------------------------------------------------------------------------------------------------

-- Group 0 is the root, "all goods"; it holds no goods itself.
CREATE TABLE GoodGrpS (
    Code    smallint     NOT NULL CONSTRAINT PK_GoodGrpS PRIMARY KEY,
    Name    nvarchar(50) NOT NULL,
    Comment nvarchar(200) NULL
)

-- Groups that an ordinary user does not see in the goods list.
CREATE TABLE UserDeniedGroups (
    UserCode int      NOT NULL,
    GrpCode  smallint NOT NULL,
    CONSTRAINT PK_UserDeniedGroups PRIMARY KEY (UserCode, GrpCode),
    CONSTRAINT FK_UserDeniedGroups_Users FOREIGN KEY (UserCode) REFERENCES Users (Code) ON DELETE CASCADE,
    CONSTRAINT FK_UserDeniedGroups_GoodGrpS FOREIGN KEY (GrpCode) REFERENCES GoodGrpS (Code) ON DELETE CASCADE
)

-- Type tells a weighing scale how the good is sold: 0 by count, 1 by weight.
CREATE TABLE Units (
    Code    smallint     NOT NULL CONSTRAINT PK_Units PRIMARY KEY,
    Name    nvarchar(50) NOT NULL,
    [Type]  tinyint      NOT NULL DEFAULT 0,
    Comment nvarchar(200) NULL
)

CREATE TABLE Stores (
    Code    smallint     NOT NULL CONSTRAINT PK_Stores PRIMARY KEY,
    Name    nvarchar(50) NOT NULL,
    Comment nvarchar(200) NULL
)

-- Titles of the price levels; CostType 1: prices of goods.
CREATE TABLE CostLevel (
    Code     int          NOT NULL CONSTRAINT PK_CostLevel PRIMARY KEY,
    Name     nvarchar(50) NOT NULL,
    CostType tinyint      NOT NULL DEFAULT 1
)

-- Titles of the discount levels 1 to 4; one without a row goes by its number.
CREATE TABLE DiscountLevel (
    Code int          NOT NULL CONSTRAINT PK_DiscountLevel PRIMARY KEY,
    Name nvarchar(50) NOT NULL
)

CREATE TABLE FinanceGoodTypes (
    Code smallint     NOT NULL CONSTRAINT PK_FinanceGoodTypes PRIMARY KEY,
    Name nvarchar(50) NOT NULL
)

-- [h-img] is the swatch that lists and tag bubbles show, a PNG picture; Value the same colour as #rrggbb.
CREATE TABLE colors (
    code    int          NOT NULL CONSTRAINT PK_colors PRIMARY KEY,
    Name    nvarchar(50) NOT NULL,
    Value   char(7)      NOT NULL,
    [h-img] varbinary(max) NULL
)

CREATE TABLE TagS (
    Code       int          NOT NULL CONSTRAINT PK_TagS PRIMARY KEY,
    Name       nvarchar(50) NOT NULL,
    color_code int          NOT NULL,
    CONSTRAINT FK_TagS_colors FOREIGN KEY (color_code) REFERENCES colors (code)
)

-- The category tree. Path holds the codes from the root down to the row itself, each between commas
-- (",1,4,12,"), so that one comparison finds a whole branch. ParentCode is NULL at the root. Radif orders the branches of
-- one parent, equal ones by their codes. Goods stand in the ends of the branches only.
CREATE TABLE Categories (
    Code       int           NOT NULL CONSTRAINT PK_Categories PRIMARY KEY,
    ParentCode int           NULL,
    Name       nvarchar(100) NOT NULL,
    Path       varchar(400)  NOT NULL,
    Radif      int           NOT NULL DEFAULT 0,
    CONSTRAINT FK_Categories_Parent FOREIGN KEY (ParentCode) REFERENCES Categories (Code)
)
CREATE INDEX IX_Categories_ParentCode ON Categories (ParentCode)
GO

-- ---------------------------------------------------------------------------------------------------------
-- Goods
-- ---------------------------------------------------------------------------------------------------------

-- Name is always kala_name, blank, kala_type, blank, kala_index.
-- AbbName holds the barcodes between "!" marks: five of 25 characters, one of 100, seven marks.
-- tags holds the codes of the tags, joined by commas.
-- Meghdar_Formool is the number of main units in one second unit; 0: no formula.
-- VoucherCode is the voucher that carries the opening stock; 0: none.
CREATE TABLE GoodInf (
    Code             int           NOT NULL CONSTRAINT PK_GoodInf PRIMARY KEY,
    GrpCode          smallint      NOT NULL,
    tags             nvarchar(500) NULL,
    Name             nvarchar(152) NOT NULL,
    kala_name        nvarchar(50)  NOT NULL DEFAULT N'',
    kala_type        nvarchar(50)  NOT NULL DEFAULT N'',
    kala_index       nvarchar(50)  NOT NULL DEFAULT N'',
    AbbName          nvarchar(250) NULL,
    Pos              nvarchar(50)  NULL,
    Position         nvarchar(100) NULL,
    OffPercent       decimal(23,9) NOT NULL DEFAULT 0,
    MinAva           decimal(23,9) NOT NULL DEFAULT 0,
    Unit             smallint      NULL,
    Unit2            smallint      NULL,
    AvaBgPrd         decimal(23,9) NOT NULL DEFAULT 0,
    AvaBgPrd2        decimal(23,9) NOT NULL DEFAULT 0,
    CostBgPrd        decimal(28,9) NOT NULL DEFAULT 0,
    Store            smallint      NULL,
    SMSCode          bigint        NULL,
    ChargeExempt     bit           NOT NULL DEFAULT 0,
    ChargePercent    decimal(23,9) NOT NULL DEFAULT 0,
    TaxExempt        bit           NOT NULL DEFAULT 0,
    TaxPercent       decimal(23,9) NOT NULL DEFAULT 0,
    Meghdar_Formool  decimal(23,9) NOT NULL DEFAULT 0,
    Weight           decimal(23,9) NOT NULL DEFAULT 0,
    Height           decimal(23,9) NOT NULL DEFAULT 0,
    Width            decimal(23,9) NOT NULL DEFAULT 0,
    [Length]         decimal(23,9) NOT NULL DEFAULT 0,
    GroupDiscount    bit           NOT NULL DEFAULT 1,
    DetailUniqueCode nvarchar(15)  NULL,
    Tax_In_SellCosts bit           NOT NULL DEFAULT 0,
    Tax_In_BuyCosts  bit           NOT NULL DEFAULT 0,
    Comment          nvarchar(500) NULL,
    CreatedTime      varchar(8)    NULL,
    CreatedDate      varchar(10)   NULL,
    UserCreated      nvarchar(100) NULL,
    ModifiedTime     varchar(8)    NULL,
    ModifiedDate     varchar(10)   NULL,
    UserModified     nvarchar(100) NULL,
    VoucherCode      int           NOT NULL DEFAULT 0,
    FeaturesDetail   nvarchar(max) NULL,
    ConsumerPrice    decimal(28,9) NOT NULL DEFAULT 0,
    DaraiGoodType    smallint      NOT NULL DEFAULT 0,
    CONSTRAINT FK_GoodInf_GoodGrpS FOREIGN KEY (GrpCode) REFERENCES GoodGrpS (Code),
    CONSTRAINT FK_GoodInf_Unit FOREIGN KEY (Unit) REFERENCES Units (Code),
    CONSTRAINT FK_GoodInf_Unit2 FOREIGN KEY (Unit2) REFERENCES Units (Code),
    CONSTRAINT FK_GoodInf_Stores FOREIGN KEY (Store) REFERENCES Stores (Code),
    CONSTRAINT FK_GoodInf_FinanceGoodTypes FOREIGN KEY (DaraiGoodType) REFERENCES FinanceGoodTypes (Code)
)
-- Goods of a group in code order, and the highest code of a group.
CREATE INDEX IX_GoodInf_GrpCode ON GoodInf (GrpCode, Code)
-- A barcode is looked up with a pattern that begins with %: the narrow index is read through instead of the table.
CREATE INDEX IX_GoodInf_AbbName ON GoodInf (AbbName, Code)
CREATE INDEX IX_GoodInf_Name ON GoodInf (Name, Code)
CREATE INDEX IX_GoodInf_kala_index ON GoodInf (kala_index, Code)
CREATE INDEX IX_GoodInf_SMSCode ON GoodInf (SMSCode, Code)
CREATE INDEX IX_GoodInf_DetailUniqueCode ON GoodInf (DetailUniqueCode, Code)

-- One row per good, written before the good itself.
CREATE TABLE GoodCostDiscount (
    GoodCode           int           NOT NULL CONSTRAINT PK_GoodCostDiscount PRIMARY KEY,
    CostLevel_Sell_1   decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Sell_2   decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Sell_3   decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Sell_4   decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Sell_5   decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Sell_6   decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Sell_7   decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Sell_8   decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Sell_9   decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Sell_10  decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Buy_1    decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Buy_2    decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Buy_3    decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Buy_4    decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Buy_5    decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Buy_6    decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Buy_7    decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Buy_8    decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Buy_9    decimal(28,9) NOT NULL DEFAULT 0,
    CostLevel_Buy_10   decimal(28,9) NOT NULL DEFAULT 0,
    Default_CostLevel_Sell_Number tinyint NOT NULL DEFAULT 1,
    Default_CostLevel_Buy_Number  tinyint NOT NULL DEFAULT 1,
    Discount_Sell_1    decimal(23,9) NOT NULL DEFAULT 0,
    Discount_Sell_2    decimal(23,9) NOT NULL DEFAULT 0,
    Discount_Sell_3    decimal(23,9) NOT NULL DEFAULT 0,
    Discount_Sell_4    decimal(23,9) NOT NULL DEFAULT 0,
    Discount_Buy_1     decimal(23,9) NOT NULL DEFAULT 0,
    Discount_Buy_2     decimal(23,9) NOT NULL DEFAULT 0,
    Discount_Buy_3     decimal(23,9) NOT NULL DEFAULT 0,
    Discount_Buy_4     decimal(23,9) NOT NULL DEFAULT 0,
    Default_Discount_Sell_Number tinyint NOT NULL DEFAULT 1,
    Default_Discount_Buy_Number  tinyint NOT NULL DEFAULT 1
)

-- The prices an open editor works on. Type 3: goods; Status 0: sale, 1: purchase; TypeCode: the good.
CREATE TABLE tmpCostList (
    Id            int IDENTITY(1,1) NOT NULL CONSTRAINT PK_tmpCostList PRIMARY KEY,
    [Type]        tinyint       NOT NULL,
    Status        tinyint       NOT NULL,
    TypeCode      int           NOT NULL,
    CostLevelCode int           NOT NULL,
    Cost          decimal(28,9) NOT NULL DEFAULT 0,
    [Default]     bit           NOT NULL DEFAULT 0
)
CREATE INDEX IX_tmpCostList_TypeCode ON tmpCostList (TypeCode, [Type], Status, CostLevelCode)

-- Opening stock per good and store. tmp 0: saved; 1: the copy an open editor works on (rows of a grid are born there),
-- under a negative number of its own in place of the good's code. Radif numbers the rows of a good.
CREATE TABLE GoodFirstAsset (
    ID        int IDENTITY(1,1) NOT NULL CONSTRAINT PK_GoodFirstAsset PRIMARY KEY,
    GoodCode  int           NOT NULL,
    StoreCode smallint      NOT NULL,
    tmp       tinyint       NOT NULL DEFAULT 1,
    Amount1   decimal(23,9) NOT NULL DEFAULT 0,
    Amount2   decimal(23,9) NOT NULL DEFAULT 0,
    Comment   nvarchar(100) NULL,
    Radif     int           NOT NULL DEFAULT 1,
    CONSTRAINT FK_GoodFirstAsset_Stores FOREIGN KEY (StoreCode) REFERENCES Stores (Code)
)
CREATE INDEX IX_GoodFirstAsset_tmp ON GoodFirstAsset (tmp, GoodCode, Radif)
CREATE INDEX IX_GoodFirstAsset_GoodCode ON GoodFirstAsset (GoodCode)

-- Categories of goods. tmp 0: saved; 1: added in an editor that is still open.
CREATE TABLE Kala_category (
    Id            int IDENTITY(1,1) NOT NULL CONSTRAINT PK_Kala_category PRIMARY KEY,
    Kala_code     int     NOT NULL,
    Category_code int     NOT NULL,
    tmp           smallint NOT NULL DEFAULT 0,
    CONSTRAINT FK_Kala_category_Categories FOREIGN KEY (Category_code) REFERENCES Categories (Code)
)
CREATE INDEX IX_Kala_category_Kala_code ON Kala_category (Kala_code, Category_code, tmp)
CREATE INDEX IX_Kala_category_Category_code ON Kala_category (Category_code, Kala_code)
CREATE INDEX IX_Kala_category_tmp ON Kala_category (tmp)

-- Photos of anything that has a software part and a code. GRPCode: the part; Id_pic: the code.
CREATE TABLE PhotoGallery (
    Id      int IDENTITY(1,1) NOT NULL CONSTRAINT PK_PhotoGallery PRIMARY KEY,
    GRPCode smallint       NOT NULL,
    Id_pic  int            NOT NULL,
    Radif   int            NOT NULL DEFAULT 1,
    Title   nvarchar(100)  NULL,
    Picture varbinary(max) NOT NULL,
    tmp     tinyint        NOT NULL DEFAULT 0
)
CREATE INDEX IX_PhotoGallery_Id_pic ON PhotoGallery (Id_pic, GRPCode, tmp)

-- Lists of goods that users keep. Type 0: of goods. DisplayType 1: the goods of the list are the ones left out.
CREATE TABLE SelectedLists (
    Code        int           NOT NULL CONSTRAINT PK_SelectedLists PRIMARY KEY,
    Title       nvarchar(100) NOT NULL,
    Enable      bit           NOT NULL DEFAULT 1,
    DisplayType bit           NOT NULL DEFAULT 0,
    [Type]      tinyint       NOT NULL DEFAULT 0
)
CREATE TABLE SelectedList_Detail (
    SL_Code int NOT NULL,
    Code    int NOT NULL,
    Radif   int NOT NULL DEFAULT 1,
    CONSTRAINT PK_SelectedList_Detail PRIMARY KEY (SL_Code, Code),
    CONSTRAINT FK_SelectedList_Detail_SelectedLists FOREIGN KEY (SL_Code) REFERENCES SelectedLists (Code) ON DELETE CASCADE
)

-- Goods that the mobile ordering and the web shop sell.
CREATE TABLE OnlineProduct (
    ID       int IDENTITY(1,1) NOT NULL CONSTRAINT PK_OnlineProduct PRIMARY KEY,
    Masterid int NOT NULL,
    isdelete bit NOT NULL DEFAULT 0
)
CREATE INDEX IX_OnlineProduct_Masterid ON OnlineProduct (Masterid)
GO

CREATE TABLE Market.Product (
    ID               int IDENTITY(1,1) NOT NULL CONSTRAINT PK_Market_Product PRIMARY KEY,
    VelakProductCode int NOT NULL,
    Deleted          bit NOT NULL DEFAULT 0
)
CREATE INDEX IX_Market_Product_VelakProductCode ON Market.Product (VelakProductCode)

-- The scale's own table, in its database where there is one; the scales connection reads it here otherwise.
-- ScaleType 1: a good; ChangeType 0: the scale knows the row, 1: new, 2: changed, 3: to be removed. The program of the
-- scales sends what is not 0, sets it to 0, and deletes what it has removed.
CREATE TABLE Items (
    Code       int           NOT NULL CONSTRAINT PK_Items PRIMARY KEY,
    ScaleType  tinyint       NOT NULL DEFAULT 1,
    ChangeType tinyint       NOT NULL DEFAULT 0,
    Name1      nvarchar(152) NULL,
    Price      decimal(28,9) NOT NULL DEFAULT 0,
    BarCode    nvarchar(100) NULL,
    [Type]     int           NOT NULL DEFAULT 0
)
GO

-- ---------------------------------------------------------------------------------------------------------
-- The last changes of many goods at once, so that each can be taken back
-- ---------------------------------------------------------------------------------------------------------

-- Kind 1: prices, 2: discounts, 3: asset type, 4: detail types, 5: goods from a file.
-- Scope 0: marked goods, 1: those not marked, 2: all of a list, 3: all goods, 4: the rows of a file. Goods is how many were
-- written.
-- The columns from GoodsTakenBack on are NULL while the change stands.
CREATE TABLE BulkChanges (
    ID             int IDENTITY(1,1) NOT NULL CONSTRAINT PK_BulkChanges PRIMARY KEY,
    Kind           tinyint       NOT NULL,
    Scope          tinyint       NOT NULL,
    Title          nvarchar(300) NOT NULL,
    Goods          int           NOT NULL,
    UserChanged    nvarchar(100) NOT NULL,
    ChangedDate    varchar(10)   NOT NULL,
    ChangedTime    varchar(8)    NOT NULL,
    GoodsTakenBack int           NULL,
    GoodsLeft      int           NULL,
    UserTakenBack  nvarchar(100) NULL,
    TakenBackDate  varchar(10)   NULL,
    TakenBackTime  varchar(8)    NULL
)

-- What a change wrote: columns of the price row or of GoodInf, or one row per detail type. NewValue is NULL for a
-- price, which each good has of its own.
CREATE TABLE BulkChangeFields (
    ChangeID int           NOT NULL,
    Place    tinyint       NOT NULL,
    Field    varchar(40)   NOT NULL,
    NewValue decimal(28,9) NULL,
    CONSTRAINT PK_BulkChangeFields PRIMARY KEY (ChangeID, Place),
    CONSTRAINT FK_BulkChangeFields_BulkChanges FOREIGN KEY (ChangeID) REFERENCES BulkChanges (ID) ON DELETE CASCADE
)

-- The goods written and what they had before: Old1 is the old value of the field in place 1. IsLeft: why taking the
-- change back left the good as it was; 1: changed since, 2: deleted, 3: its old value is gone or may not come back, 4: a good
-- made by the change is in use, 0: it did not. The good may be deleted, therefore no foreign key; another with its code is known by Made, when it was made.
CREATE TABLE BulkChangeGoods (
    ChangeID int           NOT NULL,
    GoodCode int           NOT NULL,
    IsLeft   tinyint       NOT NULL DEFAULT 0,
    Made     varchar(19)   NULL,
    NewPrice decimal(28,9) NULL,
    Old1     decimal(28,9) NULL,
    Old2     decimal(28,9) NULL,
    Old3     decimal(28,9) NULL,
    Old4     decimal(28,9) NULL,
    Old5     decimal(28,9) NULL,
    Old6     decimal(28,9) NULL,
    Old7     decimal(28,9) NULL,
    Old8     decimal(28,9) NULL,
    Old9     decimal(28,9) NULL,
    Old10    decimal(28,9) NULL,
    CONSTRAINT PK_BulkChangeGoods PRIMARY KEY (ChangeID, GoodCode),
    CONSTRAINT FK_BulkChangeGoods_BulkChanges FOREIGN KEY (ChangeID) REFERENCES BulkChanges (ID) ON DELETE CASCADE
)

-- The detail types that the goods of a change had before.
CREATE TABLE BulkChangeDetails (
    ChangeID int NOT NULL,
    GoodCode int NOT NULL,
    DetailID int NOT NULL,
    CONSTRAINT PK_BulkChangeDetails PRIMARY KEY (ChangeID, GoodCode, DetailID),
    CONSTRAINT FK_BulkChangeDetails_BulkChanges FOREIGN KEY (ChangeID) REFERENCES BulkChanges (ID) ON DELETE CASCADE
)

-- What bringing goods in from a file wrote, a row for each good of its entry: New_X is NULL where it wrote no X; a good
-- that it made (IsNew) has no old values. MadePrices: it made the price row of a known good. OldModified… is the stamp
-- before.
CREATE TABLE BulkImportGoods (
    ChangeID        int           NOT NULL,
    GoodCode        int           NOT NULL,
    IsNew           bit           NOT NULL,
    MadePrices      bit           NOT NULL,
    OldModifiedTime varchar(8)    NULL,
    OldModifiedDate varchar(10)   NULL,
    OldUserModified nvarchar(100) NULL,
    New_Name              nvarchar(152) NULL,
    New_kala_name         nvarchar(50)  NULL,
    New_kala_type         nvarchar(50)  NULL,
    New_kala_index        nvarchar(50)  NULL,
    New_AbbName           nvarchar(250) NULL,
    New_GrpCode           smallint      NULL,
    New_Unit              smallint      NULL,
    New_Unit2             smallint      NULL,
    New_Meghdar_Formool   decimal(23,9) NULL,
    New_ConsumerPrice     decimal(28,9) NULL,
    New_MinAva            decimal(23,9) NULL,
    New_Position          nvarchar(100) NULL,
    New_Comment           nvarchar(500) NULL,
    New_CostLevel_Sell_1  decimal(28,9) NULL,
    New_CostLevel_Sell_2  decimal(28,9) NULL,
    New_CostLevel_Sell_3  decimal(28,9) NULL,
    New_CostLevel_Sell_4  decimal(28,9) NULL,
    New_CostLevel_Sell_5  decimal(28,9) NULL,
    New_CostLevel_Sell_6  decimal(28,9) NULL,
    New_CostLevel_Sell_7  decimal(28,9) NULL,
    New_CostLevel_Sell_8  decimal(28,9) NULL,
    New_CostLevel_Sell_9  decimal(28,9) NULL,
    New_CostLevel_Sell_10 decimal(28,9) NULL,
    New_CostLevel_Buy_1   decimal(28,9) NULL,
    New_CostLevel_Buy_2   decimal(28,9) NULL,
    New_CostLevel_Buy_3   decimal(28,9) NULL,
    New_CostLevel_Buy_4   decimal(28,9) NULL,
    New_CostLevel_Buy_5   decimal(28,9) NULL,
    New_CostLevel_Buy_6   decimal(28,9) NULL,
    New_CostLevel_Buy_7   decimal(28,9) NULL,
    New_CostLevel_Buy_8   decimal(28,9) NULL,
    New_CostLevel_Buy_9   decimal(28,9) NULL,
    New_CostLevel_Buy_10  decimal(28,9) NULL,
    Old_Name              nvarchar(152) NULL,
    Old_kala_name         nvarchar(50)  NULL,
    Old_kala_type         nvarchar(50)  NULL,
    Old_kala_index        nvarchar(50)  NULL,
    Old_AbbName           nvarchar(250) NULL,
    Old_GrpCode           smallint      NULL,
    Old_Unit              smallint      NULL,
    Old_Unit2             smallint      NULL,
    Old_Meghdar_Formool   decimal(23,9) NULL,
    Old_ConsumerPrice     decimal(28,9) NULL,
    Old_MinAva            decimal(23,9) NULL,
    Old_Position          nvarchar(100) NULL,
    Old_Comment           nvarchar(500) NULL,
    Old_CostLevel_Sell_1  decimal(28,9) NULL,
    Old_CostLevel_Sell_2  decimal(28,9) NULL,
    Old_CostLevel_Sell_3  decimal(28,9) NULL,
    Old_CostLevel_Sell_4  decimal(28,9) NULL,
    Old_CostLevel_Sell_5  decimal(28,9) NULL,
    Old_CostLevel_Sell_6  decimal(28,9) NULL,
    Old_CostLevel_Sell_7  decimal(28,9) NULL,
    Old_CostLevel_Sell_8  decimal(28,9) NULL,
    Old_CostLevel_Sell_9  decimal(28,9) NULL,
    Old_CostLevel_Sell_10 decimal(28,9) NULL,
    Old_CostLevel_Buy_1   decimal(28,9) NULL,
    Old_CostLevel_Buy_2   decimal(28,9) NULL,
    Old_CostLevel_Buy_3   decimal(28,9) NULL,
    Old_CostLevel_Buy_4   decimal(28,9) NULL,
    Old_CostLevel_Buy_5   decimal(28,9) NULL,
    Old_CostLevel_Buy_6   decimal(28,9) NULL,
    Old_CostLevel_Buy_7   decimal(28,9) NULL,
    Old_CostLevel_Buy_8   decimal(28,9) NULL,
    Old_CostLevel_Buy_9   decimal(28,9) NULL,
    Old_CostLevel_Buy_10  decimal(28,9) NULL,
    CONSTRAINT PK_BulkImportGoods PRIMARY KEY (ChangeID, GoodCode),
    CONSTRAINT FK_BulkImportGoods_BulkChanges FOREIGN KEY (ChangeID) REFERENCES BulkChanges (ID) ON DELETE CASCADE
)

-- Groups (Kind 122) and units (104) that were made for the goods of a file.
CREATE TABLE BulkImportTitles (
    ChangeID int          NOT NULL,
    Kind     smallint     NOT NULL,
    Code     smallint     NOT NULL,
    Name     nvarchar(50) NOT NULL,
    CONSTRAINT PK_BulkImportTitles PRIMARY KEY (ChangeID, Kind, Code),
    CONSTRAINT FK_BulkImportTitles_BulkChanges FOREIGN KEY (ChangeID) REFERENCES BulkChanges (ID) ON DELETE CASCADE
)
GO

-- ---------------------------------------------------------------------------------------------------------
-- Movements, stock on hand, vouchers
-- ---------------------------------------------------------------------------------------------------------

-- Movements of goods. Amounts carry their sign: in positive, out negative. Opening stock is not in here.
-- OperationType 1: purchase, 2: sale, 4: return of a sale, 5: return of a purchase, 6 and 7: what a transfer takes out
-- and brings in; the other numbers are other documents of the suite. Those of Documents have a row for each line.
CREATE TABLE Kardex (
    Code          bigint IDENTITY(1,1) NOT NULL CONSTRAINT PK_Kardex PRIMARY KEY,
    Kala          int           NOT NULL,
    Anbar         smallint      NOT NULL,
    OperationType tinyint       NOT NULL,
    OperationCode int           NOT NULL,
    OperationRow  int           NOT NULL DEFAULT 1,
    [Date]        varchar(10)   NOT NULL,
    Amount1       decimal(23,9) NOT NULL DEFAULT 0,
    Amount2       decimal(23,9) NOT NULL DEFAULT 0,
    Cost          decimal(28,9) NOT NULL DEFAULT 0,
    Sharh         nvarchar(200) NULL,
    CONSTRAINT FK_Kardex_GoodInf FOREIGN KEY (Kala) REFERENCES GoodInf (Code),
    CONSTRAINT FK_Kardex_Stores FOREIGN KEY (Anbar) REFERENCES Stores (Code)
)
CREATE INDEX IX_Kardex_Kala ON Kardex (Kala, Anbar)
CREATE INDEX IX_Kardex_Operation ON Kardex (OperationType, OperationCode)
-- The last and the highest price of a good.
CREATE INDEX IX_Kardex_Prices ON Kardex (OperationType, Kala, [Date] DESC, Code DESC) INCLUDE (Amount1, Cost)

-- Documents that move goods. Kind is the OperationType of their movements, 6 for a transfer. StoreCode is what new
-- lines begin with; ToStoreCode, the second store of a transfer, is NULL for the other kinds. AnswersCode: the sale or
-- the purchase that a return answers, 0: none. Revision counts the saves, so that an editor writes over nothing but
-- what it has read; ID tells a document from a later one with the number of a deleted one.
CREATE TABLE Documents (
    ID           int IDENTITY(1,1) NOT NULL,
    Kind         tinyint       NOT NULL,
    Code         int           NOT NULL,
    [Date]       varchar(10)   NOT NULL,
    StoreCode    smallint      NOT NULL,
    ToStoreCode  smallint      NULL,
    AnswersCode  int           NOT NULL DEFAULT 0,
    Comment      nvarchar(200) NULL,
    Revision     int           NOT NULL DEFAULT 1,
    CreatedTime  varchar(8)    NULL,
    CreatedDate  varchar(10)   NULL,
    UserCreated  nvarchar(100) NULL,
    ModifiedTime varchar(8)    NULL,
    ModifiedDate varchar(10)   NULL,
    UserModified nvarchar(100) NULL,
    CONSTRAINT PK_Documents PRIMARY KEY (Kind, Code),
    CONSTRAINT FK_Documents_Store FOREIGN KEY (StoreCode) REFERENCES Stores (Code),
    CONSTRAINT FK_Documents_ToStore FOREIGN KEY (ToStoreCode) REFERENCES Stores (Code)
)
CREATE INDEX IX_Documents_Date ON Documents ([Date], Kind, Code)
CREATE INDEX IX_Documents_AnswersCode ON Documents (AnswersCode, Kind)

-- OperationRow names a line for good: movements and details are found by it, whatever stands before the line. Amounts
-- are without sign, prices those of one main unit.
CREATE TABLE DocumentLines (
    Kind         tinyint       NOT NULL,
    Code         int           NOT NULL,
    OperationRow int           NOT NULL,
    GoodCode     int           NOT NULL,
    StoreCode    smallint      NOT NULL,
    Amount1      decimal(23,9) NOT NULL DEFAULT 0,
    Amount2      decimal(23,9) NOT NULL DEFAULT 0,
    Price        decimal(28,9) NOT NULL DEFAULT 0,
    CONSTRAINT PK_DocumentLines PRIMARY KEY (Kind, Code, OperationRow),
    CONSTRAINT FK_DocumentLines_Documents FOREIGN KEY (Kind, Code) REFERENCES Documents (Kind, Code) ON DELETE CASCADE,
    CONSTRAINT FK_DocumentLines_GoodInf FOREIGN KEY (GoodCode) REFERENCES GoodInf (Code),
    CONSTRAINT FK_DocumentLines_Stores FOREIGN KEY (StoreCode) REFERENCES Stores (Code)
)
CREATE INDEX IX_DocumentLines_GoodCode ON DocumentLines (GoodCode)

-- Stock on hand as UpdateMogodiKala last reckoned it: per store, and per good for the goods list.
CREATE TABLE GoodStoreStock (
    GoodCode  int           NOT NULL,
    StoreCode smallint      NOT NULL,
    Amount1   decimal(23,9) NOT NULL DEFAULT 0,
    Amount2   decimal(23,9) NOT NULL DEFAULT 0,
    CONSTRAINT PK_GoodStoreStock PRIMARY KEY (GoodCode, StoreCode),
    CONSTRAINT FK_GoodStoreStock_GoodInf FOREIGN KEY (GoodCode) REFERENCES GoodInf (Code) ON DELETE CASCADE
)
CREATE TABLE GoodStock (
    GoodCode int           NOT NULL CONSTRAINT PK_GoodStock PRIMARY KEY,
    Amount1  decimal(23,9) NOT NULL DEFAULT 0,
    Amount2  decimal(23,9) NOT NULL DEFAULT 0,
    CONSTRAINT FK_GoodStock_GoodInf FOREIGN KEY (GoodCode) REFERENCES GoodInf (Code) ON DELETE CASCADE
)

-- Storage operations that other documents bring about by themselves.
CREATE TABLE StorageAutoOperation (
    ID            int IDENTITY(1,1) NOT NULL CONSTRAINT PK_StorageAutoOperation PRIMARY KEY,
    OperationType tinyint     NOT NULL,
    OperationCode int         NOT NULL,
    [Date]        varchar(10) NULL,
    UserCode      int         NOT NULL DEFAULT 0,
    CONSTRAINT UQ_StorageAutoOperation UNIQUE (OperationType, OperationCode)
)
CREATE TABLE StorageAutoOperationDetail (
    ID            int IDENTITY(1,1) NOT NULL CONSTRAINT PK_StorageAutoOperationDetail PRIMARY KEY,
    OperationID   int           NOT NULL,
    OperationRow  int           NOT NULL,
    GoodCode      int           NOT NULL,
    StoreCode     smallint      NOT NULL,
    Amount1       decimal(23,9) NOT NULL DEFAULT 0,
    Amount2       decimal(23,9) NOT NULL DEFAULT 0,
    CONSTRAINT FK_StorageAutoOperationDetail_Operation FOREIGN KEY (OperationID)
        REFERENCES StorageAutoOperation (ID) ON DELETE CASCADE
)
CREATE INDEX IX_StorageAutoOperationDetail_OperationID ON StorageAutoOperationDetail (OperationID)

-- Kind 1: the voucher of the first period (opening stock). An approved voucher is never changed.
CREATE TABLE Vouchers (
    Code     int           NOT NULL CONSTRAINT PK_Vouchers PRIMARY KEY,
    Kind     tinyint       NOT NULL,
    [Date]   varchar(10)   NOT NULL,
    Comment  nvarchar(200) NULL,
    Approved bit           NOT NULL DEFAULT 0
)
-- GoodCode is NULL on the balancing line.
CREATE TABLE VoucherLines (
    ID          int IDENTITY(1,1) NOT NULL CONSTRAINT PK_VoucherLines PRIMARY KEY,
    VoucherCode int           NOT NULL,
    GoodCode    int           NULL,
    Sharh       nvarchar(300) NOT NULL,
    Bedehkar    decimal(28,9) NOT NULL DEFAULT 0,
    Bestankar   decimal(28,9) NOT NULL DEFAULT 0,
    CONSTRAINT FK_VoucherLines_Vouchers FOREIGN KEY (VoucherCode) REFERENCES Vouchers (Code) ON DELETE CASCADE
)
CREATE INDEX IX_VoucherLines_VoucherCode ON VoucherLines (VoucherCode, GoodCode)
CREATE INDEX IX_VoucherLines_GoodCode ON VoucherLines (GoodCode)
GO

-- ---------------------------------------------------------------------------------------------------------
-- Detail types and detail values
-- ---------------------------------------------------------------------------------------------------------

-- DetailType: 1 list, 2 text, 3 serial, 4 number, 5 date, 6 barcode, 7 two-state.
-- DateType: 0 Gregorian, 1 solar Hijri.
CREATE TABLE DetailTypes (
    ID               int IDENTITY(1,1) NOT NULL CONSTRAINT PK_DetailTypes PRIMARY KEY,
    Title            nvarchar(100) NOT NULL,
    DetailType       int           NOT NULL,
    IsRequired       bit           NOT NULL DEFAULT 0,
    ToggleTitleTrue  nvarchar(50)  NULL,
    ToggleTitleFalse nvarchar(50)  NULL,
    DefaultValue     nvarchar(50)  NULL,
    DateType         int           NOT NULL DEFAULT 0,
    DateAlarm        bit           NOT NULL DEFAULT 0,
    Comment          nvarchar(250) NULL,
    CreatedTime      varchar(8)    NULL,
    CreatedDate      varchar(10)   NULL,
    ModifiedTime     varchar(8)    NULL,
    ModifiedDate     varchar(10)   NULL,
    UserCreated      nvarchar(100) NULL,
    UserModified     nvarchar(100) NULL
)
CREATE INDEX IX_DetailTypes_Title ON DetailTypes (Title)

CREATE TABLE DetailTypesItems (
    ID       int IDENTITY(1,1) NOT NULL CONSTRAINT PK_DetailTypesItems PRIMARY KEY,
    DetailID int           NOT NULL,
    Row      int           NOT NULL,
    [Value]  nvarchar(100) NOT NULL,
    CONSTRAINT FK_DetailTypesItems_DetailTypes FOREIGN KEY (DetailID) REFERENCES DetailTypes (ID)
)
CREATE INDEX IX_DetailTypesItems_DetailID ON DetailTypesItems (DetailID, Row)

CREATE TABLE DetailTypes_SelectedLists (
    ID                  int IDENTITY(1,1) NOT NULL CONSTRAINT PK_DetailTypes_SelectedLists PRIMARY KEY,
    Code                int           NOT NULL CONSTRAINT UQ_DetailTypes_SelectedLists_Code UNIQUE,
    Title               nvarchar(100) NOT NULL,
    Comment             nvarchar(100) NULL,
    DefaultSelectedList bit           NOT NULL DEFAULT 0
)

-- Members stay when their category is deleted, therefore no foreign key to it.
CREATE TABLE DetailTypes_SelectedList_Detail (
    SL_Code int NOT NULL,
    Code    int NOT NULL,
    Radif   int NOT NULL,
    CONSTRAINT PK_DetailTypes_SelectedList_Detail PRIMARY KEY (SL_Code, Code),
    CONSTRAINT FK_DetailTypes_SelectedList_Detail_DetailTypes FOREIGN KEY (Code) REFERENCES DetailTypes (ID)
)

CREATE TABLE GoodDetailRelation (
    ID       int IDENTITY(1,1) NOT NULL CONSTRAINT PK_GoodDetailRelation PRIMARY KEY,
    GoodCode int NOT NULL,
    DetailID int NOT NULL,
    CONSTRAINT FK_GoodDetailRelation_GoodInf FOREIGN KEY (GoodCode) REFERENCES GoodInf (Code) ON DELETE CASCADE,
    CONSTRAINT FK_GoodDetailRelation_DetailTypes FOREIGN KEY (DetailID) REFERENCES DetailTypes (ID)
)
CREATE INDEX IX_GoodDetailRelation_GoodCode ON GoodDetailRelation (GoodCode, DetailID)
CREATE INDEX IX_GoodDetailRelation_DetailID ON GoodDetailRelation (DetailID)

-- One row per distinct combination of detail values of a good; its ID is the DetailValueID elsewhere.
-- Recorded while the good may still be new, therefore no foreign key to it.
CREATE TABLE GoodDetailValues (
    ID       int IDENTITY(1,1) NOT NULL CONSTRAINT PK_GoodDetailValues PRIMARY KEY,
    GoodCode int NOT NULL
)
CREATE INDEX IX_GoodDetailValues_GoodCode ON GoodDetailValues (GoodCode)

CREATE TABLE GoodDetailValueDetails (
    ID            int IDENTITY(1,1) NOT NULL CONSTRAINT PK_GoodDetailValueDetails PRIMARY KEY,
    DetailValueID int           NOT NULL,
    DetailID      int           NOT NULL,
    [Value]       nvarchar(100) NOT NULL,
    CONSTRAINT FK_GoodDetailValueDetails_GoodDetailValues FOREIGN KEY (DetailValueID)
        REFERENCES GoodDetailValues (ID) ON DELETE CASCADE,
    CONSTRAINT FK_GoodDetailValueDetails_DetailTypes FOREIGN KEY (DetailID) REFERENCES DetailTypes (ID)
)
-- With the value in it: lists of details read it for every row.
CREATE INDEX IX_GoodDetailValueDetails_DetailValueID ON GoodDetailValueDetails (DetailValueID, DetailID, [Value])
CREATE INDEX IX_GoodDetailValueDetails_Value ON GoodDetailValueDetails ([Value], DetailID, DetailValueID)

-- The detail ledger. Amounts carry their sign, as in Kardex.
CREATE TABLE GoodDetailKardex (
    ID            int IDENTITY(1,1) NOT NULL CONSTRAINT PK_GoodDetailKardex PRIMARY KEY,
    DetailValueID int           NOT NULL,
    StoreCode     smallint      NOT NULL,
    GoodCode      int           NOT NULL,
    Amount1       decimal(23,9) NOT NULL DEFAULT 0,
    Amount2       decimal(23,9) NOT NULL DEFAULT 0,
    TotalAmount   decimal(23,9) NOT NULL DEFAULT 0,
    [Length]      decimal(23,9) NOT NULL DEFAULT 0,
    Width         decimal(23,9) NOT NULL DEFAULT 0,
    Amount3       decimal(23,9) NOT NULL DEFAULT 0,
    OperationType tinyint       NOT NULL,
    OperationCode int           NOT NULL,
    OperationRow  int           NOT NULL DEFAULT 1,
    ForeignOperationCode int    NOT NULL DEFAULT 0,
    CONSTRAINT FK_GoodDetailKardex_GoodDetailValues FOREIGN KEY (DetailValueID) REFERENCES GoodDetailValues (ID),
    CONSTRAINT FK_GoodDetailKardex_Stores FOREIGN KEY (StoreCode) REFERENCES Stores (Code)
)
CREATE INDEX IX_GoodDetailKardex_DetailValueID ON GoodDetailKardex (DetailValueID, StoreCode)
CREATE INDEX IX_GoodDetailKardex_GoodCode ON GoodDetailKardex (GoodCode, StoreCode)
CREATE INDEX IX_GoodDetailKardex_Operation ON GoodDetailKardex (OperationType, OperationCode, OperationRow)
CREATE INDEX IX_GoodDetailKardex_Foreign ON GoodDetailKardex (ForeignOperationCode, OperationType)

-- Desks that have working rows of details: their ComIndex is the number, which is never given twice. Parked: the desk
-- has been silent for so long that its rows keep nothing from others any more.
CREATE TABLE DetailDesks (
    Number int IDENTITY(1,1) NOT NULL CONSTRAINT PK_DetailDesks PRIMARY KEY,
    SeenAt datetime NOT NULL DEFAULT GETDATE(),
    Parked bit      NOT NULL DEFAULT 0
)

-- Rows entered on documents that are not saved yet. DetailValueID is negative where the desk is parked, NULL on the row
-- that tells that a line was kept.
CREATE TABLE GoodDetailKardexEnter_Temp (
    ID            int IDENTITY(1,1) NOT NULL CONSTRAINT PK_GoodDetailKardexEnter_Temp PRIMARY KEY,
    DetailValueID int           NULL,
    StoreCode     int           NULL,
    GoodCode      int           NULL,
    DetailTitle1  nvarchar(100) NULL,
    DetailTitle2  nvarchar(100) NULL,
    DetailTitle3  nvarchar(100) NULL,
    DetailTitle4  nvarchar(100) NULL,
    DetailTitle5  nvarchar(100) NULL,
    Amount1       decimal(23,9) NULL,
    Amount2       decimal(23,9) NULL,
    TotalAmount   decimal(23,9) NULL,
    [Length]      decimal(23,9) NULL,
    Width         decimal(23,9) NULL,
    Amount3       decimal(23,9) NULL,
    OperationType tinyint       NULL,
    OperationCode int           NULL,
    OperationRow  int           NULL,
    ForeignOperationCode int    NULL,
    ComIndex      int           NULL,
    Tmp           tinyint       NULL
)
CREATE INDEX IX_GoodDetailKardexEnter_Temp_DetailValueID ON GoodDetailKardexEnter_Temp (DetailValueID)
CREATE INDEX IX_GoodDetailKardexEnter_Temp_Operation
    ON GoodDetailKardexEnter_Temp (OperationType, OperationCode, OperationRow, ComIndex)

-- What the exit screen shows and the quantities (_Exit) chosen to go out.
CREATE TABLE GoodDetailKardexExit_Temp (
    ID               int IDENTITY(1,1) NOT NULL CONSTRAINT PK_GoodDetailKardexExit_Temp PRIMARY KEY,
    DetailValueID    int           NULL,
    StoreCode        int           NULL,
    GoodCode         int           NULL,
    AnbarCode        int           NULL,
    DetailTitle1     nvarchar(100) NULL,
    DetailTitle2     nvarchar(100) NULL,
    DetailTitle3     nvarchar(100) NULL,
    DetailTitle4     nvarchar(100) NULL,
    DetailTitle5     nvarchar(100) NULL,
    Amount1          decimal(23,9) NULL,
    Amount2          decimal(23,9) NULL,
    TotalAmount      decimal(23,9) NULL,
    [Length]         decimal(23,9) NULL,
    Width            decimal(23,9) NULL,
    Amount3          decimal(23,9) NULL,
    Amount1_Exit     decimal(23,9) NULL,
    Amount2_Exit     decimal(23,9) NULL,
    TotalAmount_Exit decimal(23,9) NULL,
    Length_Exit      decimal(23,9) NULL,
    Width_Exit       decimal(23,9) NULL,
    Amount3_Exit     decimal(23,9) NULL,
    OperationType    tinyint       NULL,
    OperationCode    int           NULL,
    OperationRow     int           NULL,
    ForeignOperationCode int       NULL,
    ComIndex         int           NULL,
    Selected         bit           NOT NULL DEFAULT 0,
    Tmp              tinyint       NULL
)
-- In the order in which the rows of a line are listed; the last two tell what a typed or scanned serial leaves of a
-- hundred thousand, and what is chosen, without the rows themselves.
CREATE INDEX IX_GoodDetailKardexExit_Temp_ComIndex
    ON GoodDetailKardexExit_Temp (ComIndex, OperationType, OperationCode, OperationRow, StoreCode, Tmp, ID, DetailTitle1,
        Selected)

-- Serials of documents, one row per unit.
CREATE TABLE Serials (
    Id          int IDENTITY(1,1) NOT NULL CONSTRAINT PK_Serials PRIMARY KEY,
    code        int           NOT NULL,
    radif       smallint      NOT NULL DEFAULT 1,
    [type]      tinyint       NOT NULL,
    tmp         tinyint       NOT NULL DEFAULT 1,
    meghdar     decimal(23,9) NOT NULL DEFAULT 0,
    meghdar2    decimal(23,9) NOT NULL DEFAULT 0,
    sharh       nvarchar(50)  NULL,
    anbar       smallint      NULL,
    kala        int           NULL,
    percode     int           NULL,
    ToAnbarCode smallint      NULL,
    MeghdarKol  decimal(23,9) NOT NULL DEFAULT 0,
    ExpireDate_SR nvarchar(20) NULL,
    Color_SR    nvarchar(20)  NULL,
    Size_SR     nvarchar(20)  NULL
)
CREATE INDEX IX_Serials_type ON Serials ([type], code)
GO

-- ---------------------------------------------------------------------------------------------------------
-- Division of details into parts
-- ---------------------------------------------------------------------------------------------------------

-- Every save writes a division anew: its ID tells which save it was.
CREATE TABLE GoodDetailDivision (
    ID      int IDENTITY(1,1) NOT NULL CONSTRAINT PK_GoodDetailDivision PRIMARY KEY,
    Code    int           NOT NULL CONSTRAINT UQ_GoodDetailDivision_Code UNIQUE,
    [Date]  char(10)      NOT NULL,
    Comment nvarchar(200) NULL
)
CREATE INDEX IX_GoodDetailDivision_Date ON GoodDetailDivision ([Date], Code)
-- Source rows: the units that are divided, the exit side (operation type 24).
CREATE TABLE GoodDetailDivisionDetail (
    ID            int IDENTITY(1,1) NOT NULL CONSTRAINT PK_GoodDetailDivisionDetail PRIMARY KEY,
    DivisionCode  int           NOT NULL,
    OperationRow  int           NOT NULL,
    StoreCode     smallint      NOT NULL,
    GoodCode      int           NOT NULL,
    DetailValueID int           NOT NULL,
    Amount1       decimal(23,9) NOT NULL DEFAULT 0,
    Amount2       decimal(23,9) NOT NULL DEFAULT 0,
    [Length]      decimal(23,9) NOT NULL DEFAULT 0,
    Width         decimal(23,9) NOT NULL DEFAULT 0,
    Amount3       decimal(23,9) NOT NULL DEFAULT 0,
    Comment       nvarchar(200) NULL,
    CONSTRAINT FK_GoodDetailDivisionDetail_Division FOREIGN KEY (DivisionCode) REFERENCES GoodDetailDivision (Code),
    CONSTRAINT FK_GoodDetailDivisionDetail_GoodInf FOREIGN KEY (GoodCode) REFERENCES GoodInf (Code),
    CONSTRAINT FK_GoodDetailDivisionDetail_GoodDetailValues FOREIGN KEY (DetailValueID) REFERENCES GoodDetailValues (ID)
)
CREATE INDEX IX_GoodDetailDivisionDetail_DetailValueID ON GoodDetailDivisionDetail (DetailValueID)
CREATE INDEX IX_GoodDetailDivisionDetail_GoodCode ON GoodDetailDivisionDetail (GoodCode)
CREATE UNIQUE INDEX IX_GoodDetailDivisionDetail_DivisionCode ON GoodDetailDivisionDetail (DivisionCode, OperationRow)
-- Parts that a source row was divided into, the entry side (operation type 25). Amount3 counts the pieces, but for
-- packed goods: there it is what a package holds. The detail values of a part stand in the ledger, under its row.
CREATE TABLE GoodDetailDivisionDetailItems (
    ID            int IDENTITY(1,1) NOT NULL CONSTRAINT PK_GoodDetailDivisionDetailItems PRIMARY KEY,
    DivisionCode  int           NOT NULL,
    DivisionRow   int           NOT NULL,
    OperationRow  int           NOT NULL,
    Amount1       decimal(23,9) NOT NULL DEFAULT 0,
    Amount2       decimal(23,9) NOT NULL DEFAULT 0,
    [Length]      decimal(23,9) NOT NULL DEFAULT 0,
    Width         decimal(23,9) NOT NULL DEFAULT 0,
    Amount3       decimal(23,9) NOT NULL DEFAULT 0,
    Waste         bit           NOT NULL DEFAULT 0,
    CONSTRAINT FK_GoodDetailDivisionDetailItems_Division FOREIGN KEY (DivisionCode) REFERENCES GoodDetailDivision (Code)
)
CREATE UNIQUE INDEX IX_GoodDetailDivisionDetailItems_DivisionCode ON GoodDetailDivisionDetailItems (DivisionCode, OperationRow)
GO

-- ---------------------------------------------------------------------------------------------------------
-- Rows without which no screen works. Each statement adds what is missing: they run again when a database of an earlier
-- version is brought up to date.
-- ---------------------------------------------------------------------------------------------------------

INSERT INTO inf_co (ID, Name, [DATE])
SELECT v.ID, v.Name, v.FirstDay
FROM (VALUES (1, N'شرکت من', '1405/01/01')) AS v (ID, Name, FirstDay)
WHERE NOT EXISTS (SELECT 1 FROM inf_co)

INSERT INTO Users (Code, Name, ManageType)
SELECT v.Code, v.Name, v.ManageType
FROM (VALUES (1, N'مدیر سیستم', 1)) AS v (Code, Name, ManageType)
WHERE NOT EXISTS (SELECT 1 FROM Users)

INSERT INTO GoodGrpS (Code, Name)
SELECT v.Code, v.Name
FROM (VALUES (0, N'کلیه کالاها')) AS v (Code, Name)
WHERE NOT EXISTS (SELECT 1 FROM GoodGrpS AS k WHERE k.Code = v.Code)

INSERT INTO FinanceGoodTypes (Code, Name)
SELECT v.Code, v.Name
FROM (VALUES
    (0, N'تعیین نشده'),
    (1, N'کالای خریداری شده جهت فروش'),
    (2, N'مواد اولیه'),
    (3, N'کالای ساخته شده'),
    (4, N'دارایی ثابت'),
    (5, N'ملزومات مصرفی')) AS v (Code, Name)
WHERE NOT EXISTS (SELECT 1 FROM FinanceGoodTypes AS k WHERE k.Code = v.Code)

INSERT INTO CostLevel (Code, Name, CostType)
SELECT v.Code, v.Name, 1
FROM (VALUES
    (1, N'سطح قیمتی 1'), (2, N'سطح قیمتی 2'), (3, N'سطح قیمتی 3'), (4, N'سطح قیمتی 4'), (5, N'سطح قیمتی 5'),
    (6, N'سطح قیمتی 6'), (7, N'سطح قیمتی 7'), (8, N'سطح قیمتی 8'), (9, N'سطح قیمتی 9'), (10, N'سطح قیمتی 10'))
    AS v (Code, Name)
WHERE NOT EXISTS (SELECT 1 FROM CostLevel AS k WHERE k.Code = v.Code)

-- The first user may do everything. A part in which nobody has a right is a new one.
INSERT INTO UserRights (UserCode, SoftwarePart, Permission)
SELECT 1, a.Part, b.Permission
FROM (SELECT 102 AS Part UNION ALL SELECT 104 UNION ALL SELECT 105 UNION ALL SELECT 121 UNION ALL SELECT 122
      UNION ALL SELECT 201 UNION ALL SELECT 202 UNION ALL SELECT 204 UNION ALL SELECT 205 UNION ALL SELECT 206
      UNION ALL SELECT 309 UNION ALL SELECT 314 UNION ALL SELECT 513) AS a
CROSS JOIN
     (SELECT 1 AS Permission UNION ALL SELECT 2 UNION ALL SELECT 3 UNION ALL SELECT 6 UNION ALL SELECT 9
      UNION ALL SELECT 10 UNION ALL SELECT 34) AS b
WHERE NOT EXISTS (SELECT 1 FROM UserRights AS k WHERE k.SoftwarePart = a.Part)

-- Numbers are decimal text, switches 0 or 1. DatabaseVersion goes up by one with every change of this file or of
-- procedures.sql: a database with a lower number is brought up to date, one with a higher number is left alone.
INSERT INTO Settings (Name, Value)
SELECT v.Name, v.Value
FROM (VALUES
    ('DatabaseVersion', N'1'),
    ('GoodDetails', N'1'),
    ('GoodDetailsForOpening', N'0'),
    ('TwoUnitGoods', N'1'),
    ('TwoUnitVariableRatio', N'0'),
    ('SquareMetreGoods', N'0'),
    ('SquareMetreUnit', N'0'),
    ('StockOnGoodsList', N'1'),
    ('AutoKeyboard', N'1'),
    ('IntegerUnits', N'0'),
    ('DivisionWaste', N'0'),
    ('ControlNegativeStock', N'1'),
    ('FinalPrices', N'1'),
    ('RowDiscounts', N'1'),
    ('ValueAddedTax', N'1'),
    ('GoodCodeLength', N'6'),
    ('ReservedBarcode1', N''),
    ('ReservedBarcode2', N''),
    ('ReservedBarcode3', N'')) AS v (Name, Value)
WHERE NOT EXISTS (SELECT 1 FROM Settings AS k WHERE k.Name = v.Name)
GO
