-- Makes the demo database large: copies of its goods, with prices, stock, opening stock and categories, up to
-- 100,000 goods in all. For measurements; runs once, after demo.sql.

CREATE TABLE #Seed (No int IDENTITY(1,1) NOT NULL PRIMARY KEY, Code int NOT NULL)
INSERT INTO #Seed (Code) SELECT Code FROM GoodInf ORDER BY Code

DECLARE @Count int
SELECT @Count = COUNT(*) FROM #Seed

CREATE TABLE #Copies (No int NOT NULL PRIMARY KEY)
INSERT INTO #Copies (No) VALUES (0)
DECLARE @Copies int
SET @Copies = 1
WHILE @Copies * @Count < 100000
BEGIN
    INSERT INTO #Copies (No) SELECT No + @Copies FROM #Copies
    SET @Copies = @Copies * 2
END

-- Source and target codes; new codes begin at 300001, beyond those of every group of the demo data.
CREATE TABLE #Pairs (NewCode int NOT NULL PRIMARY KEY, Code int NOT NULL, CopyNo int NOT NULL)
INSERT INTO #Pairs (NewCode, Code, CopyNo)
SELECT 300000 + c.No * @Count + s.No, s.Code, c.No
FROM #Copies AS c
CROSS JOIN #Seed AS s
WHERE c.No * @Count + s.No <= 100000 - @Count

INSERT INTO GoodInf (Code, GrpCode, tags, Name, kala_name, kala_type, kala_index, AbbName, Pos, Position, MinAva, Unit, Unit2,
    AvaBgPrd, AvaBgPrd2, CostBgPrd, Store, SMSCode, TaxExempt, ChargeExempt, Meghdar_Formool, Comment, CreatedTime, CreatedDate,
    UserCreated, ConsumerPrice, DaraiGoodType)
SELECT p.NewCode, g.GrpCode, g.tags, g.Name + N' ' + CAST(p.CopyNo AS nvarchar(11)), g.kala_name, g.kala_type,
    g.kala_index + N' ' + CAST(p.CopyNo AS nvarchar(11)), N'!626' + CAST(1000000000 + p.NewCode AS nvarchar(11)) + N'!', g.Pos,
    g.Position, g.MinAva, g.Unit, g.Unit2, g.AvaBgPrd, g.AvaBgPrd2, g.CostBgPrd, g.Store, p.NewCode, g.TaxExempt, g.ChargeExempt,
    g.Meghdar_Formool, g.Comment, g.CreatedTime, g.CreatedDate, g.UserCreated, g.ConsumerPrice, g.DaraiGoodType
FROM #Pairs AS p
INNER JOIN GoodInf AS g ON g.Code = p.Code

INSERT INTO GoodCostDiscount (GoodCode, CostLevel_Sell_1, CostLevel_Sell_2, CostLevel_Sell_3, CostLevel_Sell_4, CostLevel_Buy_1,
    CostLevel_Buy_2, Discount_Sell_1, Discount_Sell_2, Discount_Buy_1)
SELECT p.NewCode, c.CostLevel_Sell_1, c.CostLevel_Sell_2, c.CostLevel_Sell_3, c.CostLevel_Sell_4, c.CostLevel_Buy_1,
    c.CostLevel_Buy_2, c.Discount_Sell_1, c.Discount_Sell_2, c.Discount_Buy_1
FROM #Pairs AS p
INNER JOIN GoodCostDiscount AS c ON c.GoodCode = p.Code

INSERT INTO GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1, Amount2, Radif)
SELECT p.NewCode, a.StoreCode, 0, a.Amount1, a.Amount2, a.Radif
FROM #Pairs AS p
INNER JOIN GoodFirstAsset AS a ON a.GoodCode = p.Code AND a.tmp = 0

INSERT INTO Kardex (Kala, Anbar, OperationType, OperationCode, OperationRow, [Date], Amount1, Amount2, Cost)
SELECT p.NewCode, k.Anbar, k.OperationType, k.OperationCode, k.OperationRow, k.[Date], k.Amount1, k.Amount2, k.Cost
FROM #Pairs AS p
INNER JOIN Kardex AS k ON k.Kala = p.Code

INSERT INTO Kala_category (Kala_code, Category_code, tmp)
SELECT p.NewCode, k.Category_code, 0
FROM #Pairs AS p
INNER JOIN Kala_category AS k ON k.Kala_code = p.Code AND k.tmp = 0

DROP TABLE #Pairs
DROP TABLE #Copies
DROP TABLE #Seed
EXEC UpdateMogodiKala 255
EXEC UpdateMogodiKala 254
GO
