-- Procedures and functions of the goods database. Runs after schema.sql.

-- ---------------------------------------------------------------------------------------------------------
-- GetGoodInfCode: the proposed code of a new good in a group.
--
-- A code has @CodeLength digits, six at most: the group's number followed by running digits, at least one
-- (group 12, length 6: 120001 .. 129999; group 5, length 4: 5001 .. 5999). The ranges of groups whose numbers
-- are equally long do not meet; where ranges meet, a code is still proposed once.
--
-- Proposed is the first free code after the highest one that the group itself has in its range, so that the
-- code of a deleted good does not come back while papers with it are still about. Where there is none, the
-- lowest free code of the range; then the code after the highest of all goods; then the lowest free code of
-- all. Codes reserved by open editors are not free.
-- ---------------------------------------------------------------------------------------------------------
CREATE PROCEDURE GetGoodInfCode
    @GrpCode    int,
    @CodeLength int = 6
AS
BEGIN
    SET NOCOUNT ON

    DECLARE @Digits int
    DECLARE @Size int
    DECLARE @First int
    DECLARE @Last int
    DECLARE @After int
    DECLARE @Attempt int
    DECLARE @NewCode int

    IF @GrpCode IS NULL OR @GrpCode < 0 OR @GrpCode > 99999
        SET @GrpCode = 0
    IF @CodeLength IS NULL OR @CodeLength < 1 OR @CodeLength > 6
        SET @CodeLength = 6
    SET @Digits = @CodeLength - LEN(CAST(@GrpCode AS varchar(11)))
    IF @Digits < 1
        SET @Digits = 1
    SET @Size = 1
    WHILE @Digits > 0
    BEGIN
        SET @Size = @Size * 10
        SET @Digits = @Digits - 1
    END
    SET @First = @GrpCode * @Size + 1
    SET @Last = @GrpCode * @Size + @Size - 1

    -- A full range is not searched for what is free in it: counting is a fraction of that.
    SET @Attempt = 1
    IF (SELECT COUNT(*) FROM GoodInf WHERE Code BETWEEN @First AND @Last) > @Last - @First
        SET @Attempt = 3
    WHILE @NewCode IS NULL AND @Attempt <= 4
    BEGIN
        IF @Attempt = 1
            SELECT @After = ISNULL(MAX(Code), @First - 1)
            FROM GoodInf
            WHERE GrpCode = @GrpCode AND Code BETWEEN @First AND @Last
        ELSE IF @Attempt = 2
            SET @After = @First - 1
        ELSE IF @Attempt = 3
        BEGIN
            SET @Last = 999999
            SELECT @After = ISNULL(MAX(Code), 0) FROM GoodInf WHERE Code <= @Last
        END
        ELSE
            SET @After = 0

        -- A free code follows the starting point or a taken one behind it. The first such good ends the search of
        -- the goods, which may be many; the codes reserved are few.
        SELECT @NewCode = MIN(t.Code) + 1
        FROM (SELECT @After AS Code
              UNION ALL
              SELECT f.Code
              FROM (SELECT TOP 1 c.Code FROM GoodInf AS c
                    WHERE c.Code >= @After AND c.Code < @Last
                      AND NOT EXISTS (SELECT 1 FROM GoodInf AS g WHERE g.Code = c.Code + 1)
                      AND NOT EXISTS (SELECT 1 FROM CodeLock_TBL AS l WHERE l.Status = 102 AND l.Code = c.Code + 1)
                    ORDER BY c.Code) AS f
              UNION ALL
              SELECT Code FROM CodeLock_TBL WHERE Status = 102 AND Code BETWEEN @After AND @Last) AS t
        WHERE t.Code < @Last
          AND NOT EXISTS (SELECT 1 FROM GoodInf AS g WHERE g.Code = t.Code + 1)
          AND NOT EXISTS (SELECT 1 FROM CodeLock_TBL AS l WHERE l.Status = 102 AND l.Code = t.Code + 1)

        SET @Attempt = @Attempt + 1
    END

    IF @NewCode IS NULL
        RAISERROR(N'هیچ کد شش رقمی آزادی برای کالا باقی نمانده است.', 16, 1)
    SELECT @NewCode AS NewCode
END
GO

-- ---------------------------------------------------------------------------------------------------------
-- GetDefaultCostLevel: a price of a good, always one row.
-- @Side 0: sale, 1: purchase. @Level 0: the good's default level of that side, 1..10: this level.
-- ---------------------------------------------------------------------------------------------------------
CREATE PROCEDURE GetDefaultCostLevel
    @Side     tinyint,
    @GoodCode int,
    @Level    tinyint = 0
AS
BEGIN
    SET NOCOUNT ON

    DECLARE @Cost decimal(28,9)
    SET @Cost = 0

    IF ISNULL(@Level, 0) = 0
        SELECT @Level = CASE @Side WHEN 0 THEN Default_CostLevel_Sell_Number ELSE Default_CostLevel_Buy_Number END
        FROM GoodCostDiscount
        WHERE GoodCode = @GoodCode
    SELECT @Cost = CASE @Level
            WHEN 1 THEN CASE @Side WHEN 0 THEN CostLevel_Sell_1 ELSE CostLevel_Buy_1 END
            WHEN 2 THEN CASE @Side WHEN 0 THEN CostLevel_Sell_2 ELSE CostLevel_Buy_2 END
            WHEN 3 THEN CASE @Side WHEN 0 THEN CostLevel_Sell_3 ELSE CostLevel_Buy_3 END
            WHEN 4 THEN CASE @Side WHEN 0 THEN CostLevel_Sell_4 ELSE CostLevel_Buy_4 END
            WHEN 5 THEN CASE @Side WHEN 0 THEN CostLevel_Sell_5 ELSE CostLevel_Buy_5 END
            WHEN 6 THEN CASE @Side WHEN 0 THEN CostLevel_Sell_6 ELSE CostLevel_Buy_6 END
            WHEN 7 THEN CASE @Side WHEN 0 THEN CostLevel_Sell_7 ELSE CostLevel_Buy_7 END
            WHEN 8 THEN CASE @Side WHEN 0 THEN CostLevel_Sell_8 ELSE CostLevel_Buy_8 END
            WHEN 9 THEN CASE @Side WHEN 0 THEN CostLevel_Sell_9 ELSE CostLevel_Buy_9 END
            WHEN 10 THEN CASE @Side WHEN 0 THEN CostLevel_Sell_10 ELSE CostLevel_Buy_10 END
            ELSE 0 END
    FROM GoodCostDiscount
    WHERE GoodCode = @GoodCode

    SELECT @Cost AS cost
END
GO

-- ---------------------------------------------------------------------------------------------------------
-- GoodInf_List_SP: the rows of the goods list, in code order.
--
-- @ManageType   1: a manager; anyone else does not see the groups of UserDeniedGroups
-- @UserCode     the user whose denied groups are left out
-- @SL_Code      a selected list, 0: none; @DisplayType 1: only its goods, 0: all but its goods
-- @Cost_Flag    0: no prices
-- @RequestedCol names of the columns wanted, joined by commas; NULL or empty: all. Every column is there in
--               any case; prices, stock, unit names and tag marks that are not asked for are NULL.
-- @GrpCode      a group, NULL or 0: all
-- @GoodExistType 1: goods with stock, 0: goods without, -1: all
-- @Tags         codes of tags joined by commas: goods that carry every one of them
-- @Category     ",code,": goods of this category or of one below it
--
-- The text that runs is put together from the literals below only; values travel as parameters. A filter that
-- is not in use is not in the text, so that each combination gets a plan of its own.
-- ---------------------------------------------------------------------------------------------------------
CREATE PROCEDURE GoodInf_List_SP
    @ManageType    int = NULL,
    @UserCode      int = NULL,
    @SL_Code       int = 0,
    @Cost_Flag     int = 1,
    @DisplayType   int = 1,
    @RequestedCol  nvarchar(4000) = NULL,
    @GrpCode       int = NULL,
    @GoodExistType int = NULL,
    @Tags          nvarchar(500) = NULL,
    @Category      nvarchar(400) = NULL
AS
BEGIN
    SET NOCOUNT ON

    DECLARE @Wanted nvarchar(4000)
    DECLARE @All bit
    DECLARE @Stock bit
    DECLARE @Costs bit
    DECLARE @Columns nvarchar(max)
    DECLARE @Joins nvarchar(max)
    DECLARE @Where nvarchar(max)
    DECLARE @Sql nvarchar(max)

    SET @Wanted = N',' + REPLACE(ISNULL(@RequestedCol, N''), N' ', N'') + N','
    SET @All = 0
    IF @Wanted = N',,'
        SET @All = 1
    SET @GoodExistType = ISNULL(@GoodExistType, -1)
    SET @Columns = N''
    SET @Joins = N''
    SET @Where = N''

    -- Stock on hand, its second unit and the part below one second unit.
    SET @Stock = 0
    IF @All = 1 OR CHARINDEX(N',Mogodi,', @Wanted) > 0 OR CHARINDEX(N',Mogodi2,', @Wanted) > 0
       OR CHARINDEX(N',Joz,', @Wanted) > 0
        SET @Stock = 1
    IF @Stock = 1
        SET @Columns = @Columns + N', ISNULL(s.Amount2, 0) AS Mogodi2, ISNULL(s.Amount1, 0) AS Mogodi'
            + N', CASE WHEN g.Meghdar_Formool > 0 THEN ISNULL(s.Amount1, 0) % g.Meghdar_Formool ELSE 0 END AS Joz'
    ELSE
        SET @Columns = @Columns + N', CAST(NULL AS decimal(23,9)) AS Mogodi2, CAST(NULL AS decimal(23,9)) AS Mogodi'
            + N', CAST(NULL AS decimal(23,9)) AS Joz'
    IF @GoodExistType = 1
    BEGIN
        SET @Joins = @Joins + N' INNER JOIN GoodStock AS s ON s.GoodCode = g.Code'
        SET @Where = @Where + N' AND s.Amount1 > 0'
    END
    ELSE IF @GoodExistType = 0
    BEGIN
        SET @Joins = @Joins + N' LEFT JOIN GoodStock AS s ON s.GoodCode = g.Code'
        SET @Where = @Where + N' AND ISNULL(s.Amount1, 0) <= 0'
    END
    ELSE IF @Stock = 1
        SET @Joins = @Joins + N' LEFT JOIN GoodStock AS s ON s.GoodCode = g.Code'

    -- Unit names.
    IF @All = 1 OR CHARINDEX(N',UnitName1,', @Wanted) > 0
    BEGIN
        SET @Columns = @Columns + N', u1.Name AS UnitName1'
        SET @Joins = @Joins + N' LEFT JOIN Units AS u1 ON u1.Code = g.Unit'
    END
    ELSE
        SET @Columns = @Columns + N', CAST(NULL AS nvarchar(50)) AS UnitName1'
    IF @All = 1 OR CHARINDEX(N',UnitName2,', @Wanted) > 0
    BEGIN
        SET @Columns = @Columns + N', u2.Name AS UnitName2'
        SET @Joins = @Joins + N' LEFT JOIN Units AS u2 ON u2.Code = g.Unit2'
    END
    ELSE
        SET @Columns = @Columns + N', CAST(NULL AS nvarchar(50)) AS UnitName2'

    -- The first four sale prices.
    SET @Costs = 0
    IF @Cost_Flag <> 0 AND (@All = 1 OR CHARINDEX(N',Cost1,', @Wanted) > 0 OR CHARINDEX(N',Cost2,', @Wanted) > 0
       OR CHARINDEX(N',Cost3,', @Wanted) > 0 OR CHARINDEX(N',Cost4,', @Wanted) > 0)
        SET @Costs = 1
    IF @Costs = 1
    BEGIN
        SET @Columns = @Columns + N', c.CostLevel_Sell_1 AS Cost1, c.CostLevel_Sell_2 AS Cost2'
            + N', c.CostLevel_Sell_3 AS Cost3, c.CostLevel_Sell_4 AS Cost4'
        SET @Joins = @Joins + N' LEFT JOIN GoodCostDiscount AS c ON c.GoodCode = g.Code'
    END
    ELSE
        SET @Columns = @Columns + N', CAST(NULL AS decimal(28,9)) AS Cost1, CAST(NULL AS decimal(28,9)) AS Cost2'
            + N', CAST(NULL AS decimal(28,9)) AS Cost3, CAST(NULL AS decimal(28,9)) AS Cost4'

    -- The codes of the first three tags, for the colour marks of a row.
    IF @All = 1 OR CHARINDEX(N',t1,', @Wanted) > 0 OR CHARINDEX(N',t2,', @Wanted) > 0
       OR CHARINDEX(N',t3,', @Wanted) > 0
        SET @Columns = @Columns + N', CASE WHEN g.tags <> N'''' THEN LEFT(g.tags, CHARINDEX(N'','', g.tags + N'','') - 1) END AS t1'
            + N', CASE WHEN g.tags LIKE N''%,%'' THEN SUBSTRING(g.tags, CHARINDEX(N'','', g.tags) + 1,'
            + N' CHARINDEX(N'','', g.tags + N'','', CHARINDEX(N'','', g.tags) + 1) - CHARINDEX(N'','', g.tags) - 1) END AS t2'
            + N', CASE WHEN g.tags LIKE N''%,%,%'' THEN SUBSTRING(g.tags, CHARINDEX(N'','', g.tags, CHARINDEX(N'','', g.tags) + 1) + 1,'
            + N' CHARINDEX(N'','', g.tags + N'','', CHARINDEX(N'','', g.tags, CHARINDEX(N'','', g.tags) + 1) + 1)'
            + N' - CHARINDEX(N'','', g.tags, CHARINDEX(N'','', g.tags) + 1) - 1) END AS t3'
    ELSE
        SET @Columns = @Columns + N', CAST(NULL AS nvarchar(500)) AS t1, CAST(NULL AS nvarchar(500)) AS t2'
            + N', CAST(NULL AS nvarchar(500)) AS t3'

    IF @GrpCode <> 0
        SET @Where = @Where + N' AND g.GrpCode = @GrpCode'
    IF ISNULL(@ManageType, 1) <> 1
       AND EXISTS (SELECT 1 FROM UserDeniedGroups WHERE UserCode = @UserCode)
        SET @Where = @Where + N' AND NOT EXISTS (SELECT 1 FROM UserDeniedGroups AS d'
            + N' WHERE d.UserCode = @UserCode AND d.GrpCode = g.GrpCode)'
    IF @SL_Code <> 0 AND @DisplayType = 0
        SET @Where = @Where + N' AND NOT EXISTS (SELECT 1 FROM SelectedList_Detail AS l'
            + N' WHERE l.SL_Code = @SL_Code AND l.Code = g.Code)'
    ELSE IF @SL_Code <> 0
        SET @Where = @Where + N' AND EXISTS (SELECT 1 FROM SelectedList_Detail AS l'
            + N' WHERE l.SL_Code = @SL_Code AND l.Code = g.Code)'
    IF @Tags <> N''
        SET @Where = @Where + N' AND NOT EXISTS (SELECT 1 FROM TagS AS t'
            + N' WHERE CHARINDEX(N'','' + CAST(t.Code AS nvarchar(11)) + N'','', N'','' + @Tags + N'','') > 0'
            + N' AND CHARINDEX(N'','' + CAST(t.Code AS nvarchar(11)) + N'','', N'','' + ISNULL(g.tags, N'''') + N'','') = 0)'
    IF @Category <> N''
        SET @Where = @Where + N' AND EXISTS (SELECT 1 FROM Kala_category AS k'
            + N' INNER JOIN Categories AS ct ON ct.Code = k.Category_code'
            + N' WHERE k.Kala_code = g.Code AND k.tmp <= 0 AND CHARINDEX(@Category, ct.Path) > 0)'

    SET @Sql = N'SELECT g.Code, g.AbbName, g.Name, g.kala_name, g.kala_type, g.kala_index' + @Columns
        + N', g.ConsumerPrice, g.Position, g.MinAva, g.CostBgPrd, g.SMSCode, g.AvaBgPrd, g.Comment'
        + N', g.UserCreated, g.UserModified, g.CreatedDate + N'' '' + g.CreatedTime AS CreatedDateTime'
        + N', g.ModifiedDate + N'' '' + g.ModifiedTime AS ModifiedDateTime, g.tags, g.GrpCode, g.Meghdar_Formool'
        + N' FROM GoodInf AS g' + @Joins
    IF @Where <> N''
        SET @Sql = @Sql + N' WHERE ' + SUBSTRING(@Where, 6, LEN(@Where))
    SET @Sql = @Sql + N' ORDER BY g.Code'

    EXEC sp_executesql @Sql,
        N'@GrpCode int, @UserCode int, @SL_Code int, @Tags nvarchar(500), @Category nvarchar(400)',
        @GrpCode, @UserCode, @SL_Code, @Tags, @Category
END
GO

-- ---------------------------------------------------------------------------------------------------------
-- UpdateMogodiKala: reckons stock on hand from the saved opening stock and the movements.
-- @Type 255: the stock of every store; 254: the totals of the goods, from the stock of the stores;
--       NULL: both, in this order; any other number: the stock of that store alone.
-- @GoodCode: one good only.
-- ---------------------------------------------------------------------------------------------------------
CREATE PROCEDURE UpdateMogodiKala
    @Type     tinyint = NULL,
    @GoodCode int = NULL
AS
BEGIN
    SET NOCOUNT ON

    DECLARE @Step int
    DECLARE @FirstStore int
    DECLARE @LastStore int
    DECLARE @FirstGood int
    DECLARE @LastGood int

    SET @Step = ISNULL(@Type, 0)
    SET @FirstStore = -32768
    SET @LastStore = 32767
    IF @Type < 254
    BEGIN
        SET @FirstStore = @Type
        SET @LastStore = @Type
    END
    SET @FirstGood = ISNULL(@GoodCode, -2147483648)
    SET @LastGood = ISNULL(@GoodCode, 2147483647)

    BEGIN TRY
        BEGIN TRANSACTION

        IF @Step <> 254
        BEGIN
            DELETE FROM GoodStoreStock
            WHERE GoodCode BETWEEN @FirstGood AND @LastGood AND StoreCode BETWEEN @FirstStore AND @LastStore

            INSERT INTO GoodStoreStock (GoodCode, StoreCode, Amount1, Amount2)
            SELECT m.GoodCode, m.StoreCode, SUM(m.Amount1), SUM(m.Amount2)
            FROM (SELECT Kala AS GoodCode, Anbar AS StoreCode, Amount1, Amount2
                  FROM Kardex
                  WHERE Kala BETWEEN @FirstGood AND @LastGood AND Anbar BETWEEN @FirstStore AND @LastStore
                  UNION ALL
                  SELECT a.GoodCode, a.StoreCode, a.Amount1, a.Amount2
                  FROM GoodFirstAsset AS a
                  INNER JOIN GoodInf AS g ON g.Code = a.GoodCode
                  WHERE a.tmp = 0 AND a.GoodCode BETWEEN @FirstGood AND @LastGood
                    AND a.StoreCode BETWEEN @FirstStore AND @LastStore) AS m
            GROUP BY m.GoodCode, m.StoreCode
        END

        IF @Type IS NULL OR @Type = 254
        BEGIN
            DELETE FROM GoodStock WHERE GoodCode BETWEEN @FirstGood AND @LastGood

            INSERT INTO GoodStock (GoodCode, Amount1, Amount2)
            SELECT GoodCode, SUM(Amount1), SUM(Amount2)
            FROM GoodStoreStock
            WHERE GoodCode BETWEEN @FirstGood AND @LastGood
            GROUP BY GoodCode
        END

        COMMIT TRANSACTION
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        THROW
    END CATCH
END
GO

-- ---------------------------------------------------------------------------------------------------------
-- GoodFirstAssetList_FNC: opening stock rows with the names a list shows. The good itself may not be saved
-- yet, so its units and its ratio are the caller's: @Unit1, @Unit2 codes of units (0: none), @Formula main
-- units in one second unit (0: none). Joz is the number of whole second units, the quantity where there is
-- no ratio. Date is the first day of the period.
-- ---------------------------------------------------------------------------------------------------------
CREATE FUNCTION GoodFirstAssetList_FNC (@Unit1 int, @Unit2 int, @Formula decimal(23,9))
RETURNS TABLE
AS
RETURN
(
    SELECT a.ID, a.GoodCode, a.StoreCode, a.tmp, a.Amount1, a.Amount2, a.Comment, a.Radif,
           st.Name AS StoreName,
           (SELECT Name FROM Units WHERE Code = @Unit1) AS Unit1,
           (SELECT Name FROM Units WHERE Code = @Unit2) AS Unit2,
           CASE WHEN @Formula > 0 THEN CAST((a.Amount1 - a.Amount1 % @Formula) / @Formula AS decimal(23,9))
                ELSE a.Amount1 END AS Joz,
           (SELECT TOP 1 [DATE] FROM inf_co) AS [Date]
    FROM GoodFirstAsset AS a
    LEFT JOIN Stores AS st ON st.Code = a.StoreCode
)
GO

-- ---------------------------------------------------------------------------------------------------------
-- AutoVoucherFirstPriodGoods: keeps the voucher of the first period in step with the opening stock: one debit
-- line per good of its opening quantity times its opening price, and one credit line that balances them.
--
-- @SaveType  1: in a new voucher; 2 or NULL: in the one given by @SanadCode, else in the latest one that is not
--            approved, else in a new one; 3: the goods are taken out of their voucher
-- @SanadDate the date of the voucher; empty: the first day of the period for a new one, unchanged otherwise
-- @FromDate, @ToDate  only goods created in this span
-- @Codes     codes of the goods joined by commas; NULL or empty: those from @FromCode to @ToCode (0: no limit)
--
-- Returns the voucher's code, 0 when no opening value is left to record, -1 when the voucher is approved and
-- nothing was changed. GoodInf.VoucherCode follows.
-- ---------------------------------------------------------------------------------------------------------
CREATE PROCEDURE AutoVoucherFirstPriodGoods
    @SaveType  tinyint = NULL,
    @SanadCode int = 0,
    @SanadDate varchar(10) = '',
    @FromDate  varchar(10) = NULL,
    @ToDate    varchar(10) = NULL,
    @FromCode  int = 0,
    @ToCode    int = 0,
    @Codes     varchar(8000) = NULL
AS
BEGIN
    SET NOCOUNT ON

    DECLARE @Comma int
    DECLARE @Voucher int

    IF OBJECT_ID('tempdb..#OpeningGoods') IS NOT NULL
        DROP TABLE #OpeningGoods
    IF OBJECT_ID('tempdb..#Difference') IS NOT NULL
        DROP TABLE #Difference
    CREATE TABLE #OpeningGoods (Code int NOT NULL PRIMARY KEY)
    CREATE TABLE #Difference (Voucher int NOT NULL, Amount decimal(28,9) NOT NULL)

    IF ISNULL(@Codes, '') <> ''
        WHILE @Codes <> ''
        BEGIN
            SET @Comma = CHARINDEX(',', @Codes + ',')
            INSERT INTO #OpeningGoods (Code)
            SELECT Code FROM GoodInf
            WHERE Code = CAST(LEFT(@Codes, @Comma - 1) AS int)
              AND Code NOT IN (SELECT Code FROM #OpeningGoods)
            SET @Codes = SUBSTRING(@Codes, @Comma + 1, 8000)
        END
    ELSE
        INSERT INTO #OpeningGoods (Code)
        SELECT Code FROM GoodInf
        WHERE Code BETWEEN ISNULL(@FromCode, 0) AND ISNULL(NULLIF(@ToCode, 0), 2147483647)

    IF ISNULL(@FromDate, '') <> ''
        DELETE FROM #OpeningGoods
        WHERE Code IN (SELECT Code FROM GoodInf WHERE ISNULL(CreatedDate, '') < @FromDate)
    IF ISNULL(@ToDate, '') <> ''
        DELETE FROM #OpeningGoods
        WHERE Code IN (SELECT Code FROM GoodInf WHERE ISNULL(CreatedDate, '') > @ToDate)

    SET @Voucher = ISNULL(@SanadCode, 0)
    IF @Voucher = 0 AND ISNULL(@SaveType, 2) <> 1
        SELECT @Voucher = ISNULL(MAX(Code), 0) FROM Vouchers WHERE Kind = 1 AND Approved = 0

    -- A line of these goods in an approved voucher cannot be moved, neither can the voucher itself be changed.
    IF EXISTS (SELECT 1 FROM Vouchers WHERE Code = @Voucher AND Approved = 1)
       OR EXISTS (SELECT 1 FROM VoucherLines AS l
                  INNER JOIN Vouchers AS v ON v.Code = l.VoucherCode
                  INNER JOIN #OpeningGoods AS o ON o.Code = l.GoodCode
                  WHERE v.Kind = 1 AND v.Approved = 1)
    BEGIN
        DROP TABLE #OpeningGoods
        DROP TABLE #Difference
        RETURN -1
    END

    BEGIN TRY
        BEGIN TRANSACTION

        -- A voucher's balance follows by the difference that these goods make: it may have a line for every good.
        INSERT INTO #Difference (Voucher, Amount)
        SELECT l.VoucherCode, -SUM(l.Bedehkar)
        FROM #OpeningGoods AS o
        INNER JOIN VoucherLines AS l ON l.GoodCode = o.Code
        INNER JOIN Vouchers AS v ON v.Code = l.VoucherCode
        WHERE v.Kind = 1
        GROUP BY l.VoucherCode

        DELETE FROM VoucherLines
        WHERE GoodCode IN (SELECT Code FROM #OpeningGoods)
          AND VoucherCode IN (SELECT Code FROM Vouchers WHERE Kind = 1)
        UPDATE GoodInf SET VoucherCode = 0 WHERE VoucherCode <> 0 AND Code IN (SELECT Code FROM #OpeningGoods)

        IF ISNULL(@SaveType, 2) <> 3
        BEGIN
            IF NOT EXISTS (SELECT 1 FROM Vouchers WHERE Code = @Voucher)
            BEGIN
                IF @Voucher = 0
                    SELECT @Voucher = ISNULL(MAX(Code), 0) + 1 FROM Vouchers
                INSERT INTO Vouchers (Code, Kind, [Date], Comment)
                SELECT @Voucher, 1, [DATE], N'موجودی اول دوره' FROM inf_co
            END
            IF ISNULL(@SanadDate, '') <> ''
                UPDATE Vouchers SET [Date] = @SanadDate WHERE Code = @Voucher

            INSERT INTO VoucherLines (VoucherCode, GoodCode, Sharh, Bedehkar)
            SELECT @Voucher, g.Code, N'موجودی اول دوره ' + g.Name, SUM(a.Amount1 * g.CostBgPrd)
            FROM #OpeningGoods AS o
            INNER JOIN GoodInf AS g ON g.Code = o.Code
            INNER JOIN GoodFirstAsset AS a ON a.tmp = 0 AND a.GoodCode = o.Code
            GROUP BY g.Code, g.Name
            HAVING SUM(a.Amount1 * g.CostBgPrd) <> 0
            ORDER BY g.Code

            INSERT INTO #Difference (Voucher, Amount)
            SELECT @Voucher, ISNULL(SUM(l.Bedehkar), 0)
            FROM #OpeningGoods AS o
            INNER JOIN VoucherLines AS l ON l.GoodCode = o.Code AND l.VoucherCode = @Voucher

            UPDATE GoodInf SET VoucherCode = @Voucher
            WHERE Code IN (SELECT o.Code FROM #OpeningGoods AS o
                           INNER JOIN VoucherLines AS l ON l.GoodCode = o.Code AND l.VoucherCode = @Voucher)
        END

        UPDATE VoucherLines
        SET Bestankar = Bestankar
            + (SELECT SUM(d.Amount) FROM #Difference AS d WHERE d.Voucher = VoucherLines.VoucherCode)
        WHERE GoodCode IS NULL AND VoucherCode IN (SELECT Voucher FROM #Difference)
        INSERT INTO VoucherLines (VoucherCode, GoodCode, Sharh, Bestankar)
        SELECT d.Voucher, NULL, N'سرمایه', SUM(d.Amount)
        FROM #Difference AS d
        WHERE NOT EXISTS (SELECT 1 FROM VoucherLines AS l WHERE l.VoucherCode = d.Voucher AND l.GoodCode IS NULL)
        GROUP BY d.Voucher

        -- One without goods goes away, and its balance with it.
        DELETE FROM Vouchers
        WHERE Kind = 1 AND Approved = 0 AND Code IN (SELECT Voucher FROM #Difference)
          AND NOT EXISTS (SELECT 1 FROM VoucherLines AS l
                          WHERE l.VoucherCode = Vouchers.Code AND l.GoodCode IS NOT NULL)

        COMMIT TRANSACTION
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        THROW
    END CATCH

    DROP TABLE #OpeningGoods
    DROP TABLE #Difference
    IF NOT EXISTS (SELECT 1 FROM Vouchers WHERE Code = @Voucher)
        RETURN 0
    RETURN @Voucher
END
GO

-- ---------------------------------------------------------------------------------------------------------
-- GoodInf_Delete: removes a good and everything that belongs to it alone, in one transaction. The rules that
-- may refuse it are the caller's; movements still refuse it here by their foreign key.
-- ---------------------------------------------------------------------------------------------------------
CREATE PROCEDURE GoodInf_Delete
    @Code int
AS
BEGIN
    SET NOCOUNT ON

    BEGIN TRY
        BEGIN TRANSACTION

        DELETE FROM GoodInf WHERE Code = @Code
        DELETE FROM GoodCostDiscount WHERE GoodCode = @Code
        DELETE FROM tmpCostList WHERE [Type] = 3 AND TypeCode = @Code
        DELETE FROM GoodFirstAsset WHERE GoodCode = @Code
        DELETE FROM Kala_category WHERE Kala_code = @Code
        DELETE FROM PhotoGallery WHERE GRPCode = 102 AND Id_pic = @Code
        DELETE FROM SelectedList_Detail
        WHERE Code = @Code AND SL_Code IN (SELECT Code FROM SelectedLists WHERE [Type] = 0)

        COMMIT TRANSACTION
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        THROW
    END CATCH
END
GO

-- ---------------------------------------------------------------------------------------------------------
-- GoodDetail_Select_GoodDetailDivision: the list of divisions, of all days or of those between two.
-- ---------------------------------------------------------------------------------------------------------
CREATE PROCEDURE GoodDetail_Select_GoodDetailDivision
    @FromDate char(10) = NULL,
    @ToDate char(10) = NULL
AS
BEGIN
    SET NOCOUNT ON
    SELECT ID, Code, [Date], Comment
    FROM GoodDetailDivision
    WHERE (@FromDate IS NULL OR [Date] >= @FromDate) AND (@ToDate IS NULL OR [Date] <= @ToDate)
    ORDER BY Code
END
GO

-- ---------------------------------------------------------------------------------------------------------
-- GoodDetail_Select: the stock of a good's detail values, a row for each value and store that has any.
--
-- @ComIndex the company of the caller; a database holds the ledger of one company, so every row is its own
-- @UnitType 5: the good is measured in square metres, so its length, width and number of pieces count
-- @UnitType 3: packed goods; Amount3 is what a package holds
--
-- D1Value to D5Value follow the good's detail order: serials first, then scale bar codes, then the rest in the order
-- in which they were given to the good.
-- ---------------------------------------------------------------------------------------------------------
CREATE PROCEDURE GoodDetail_Select
    @GoodCode int,
    @ComIndex int = NULL,
    @UnitType int = 1
AS
BEGIN
    SET NOCOUNT ON

    SELECT k.DetailValueID, k.StoreCode, st.Name AS StoreName, k.GoodCode,
           v.D1Value, v.D2Value, v.D3Value, v.D4Value, v.D5Value,
           CAST(LTRIM(CONCAT(v.D1Value, N' ' + v.D2Value, N' ' + v.D3Value, N' ' + v.D4Value, N' ' + v.D5Value))
                AS nvarchar(512)) AS GoodDetailValues,
           k.Amount1, k.Amount2,
           CAST(CASE WHEN @UnitType = 5 THEN k.[Length] END AS decimal(38,9)) AS [Length],
           CAST(CASE WHEN @UnitType = 5 THEN k.Width END AS decimal(38,9)) AS Width,
           CASE WHEN @UnitType = 3 THEN k.Package WHEN @UnitType = 5 THEN k.Amount3 END AS Amount3,
           k.TotalAmount
    FROM (SELECT DetailValueID, StoreCode, GoodCode, SUM(Amount1) AS Amount1, SUM(Amount2) AS Amount2,
                 SUM(TotalAmount) AS TotalAmount, MAX([Length]) AS [Length], MAX(Width) AS Width,
                 SUM(Amount3) AS Amount3, MAX(Amount3) AS Package
          FROM GoodDetailKardex
          WHERE GoodCode = @GoodCode
          GROUP BY DetailValueID, StoreCode, GoodCode
          HAVING SUM(Amount1) <> 0 OR SUM(Amount2) <> 0 OR (@UnitType <> 3 AND SUM(Amount3) <> 0)) AS k
    INNER JOIN Stores AS st ON st.Code = k.StoreCode
    LEFT JOIN (SELECT n.DetailValueID,
                       MAX(CASE WHEN n.Place = 1 THEN n.[Value] END) AS D1Value,
                       MAX(CASE WHEN n.Place = 2 THEN n.[Value] END) AS D2Value,
                       MAX(CASE WHEN n.Place = 3 THEN n.[Value] END) AS D3Value,
                       MAX(CASE WHEN n.Place = 4 THEN n.[Value] END) AS D4Value,
                       MAX(CASE WHEN n.Place = 5 THEN n.[Value] END) AS D5Value
                FROM (SELECT d.DetailValueID, d.[Value],
                             (SELECT COUNT(*)
                              FROM GoodDetailRelation AS o
                              INNER JOIN DetailTypes AS ot ON ot.ID = o.DetailID
                              WHERE o.GoodCode = @GoodCode
                                AND (CASE ot.DetailType WHEN 3 THEN 0 WHEN 6 THEN 1 ELSE 2 END
                                       < CASE t.DetailType WHEN 3 THEN 0 WHEN 6 THEN 1 ELSE 2 END
                                     OR (CASE ot.DetailType WHEN 3 THEN 0 WHEN 6 THEN 1 ELSE 2 END
                                           = CASE t.DetailType WHEN 3 THEN 0 WHEN 6 THEN 1 ELSE 2 END
                                         AND o.ID <= r.ID))) AS Place
                      FROM GoodDetailValues AS gv
                      INNER JOIN GoodDetailValueDetails AS d ON d.DetailValueID = gv.ID
                      INNER JOIN GoodDetailRelation AS r ON r.GoodCode = gv.GoodCode AND r.DetailID = d.DetailID
                      INNER JOIN DetailTypes AS t ON t.ID = d.DetailID
                      WHERE gv.GoodCode = @GoodCode) AS n
                GROUP BY n.DetailValueID) AS v ON v.DetailValueID = k.DetailValueID
    ORDER BY k.StoreCode, v.D1Value, v.D2Value, k.DetailValueID
END
GO
