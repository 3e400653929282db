-- What must be true of documents, movements, stock and details at any moment. Each batch gives a row for each fault:
-- what is wrong, and where. Changes nothing; the number of statements is the same for any size of the database.

-- Stock per store, as kept and as it follows from opening stock and movements.
SELECT N'stock of a store differs from its movements' AS Fault, m.GoodCode, m.StoreCode, SUM(m.Kept1) AS Kept,
       SUM(m.Amount1) AS Reckoned
FROM (SELECT Kala AS GoodCode, Anbar AS StoreCode, 0 AS Kept1, 0 AS Kept2, Amount1, Amount2 FROM Kardex
      UNION ALL
      SELECT a.GoodCode, a.StoreCode, 0, 0, a.Amount1, a.Amount2
      FROM GoodFirstAsset AS a
      INNER JOIN GoodInf AS g ON g.Code = a.GoodCode
      WHERE a.tmp = 0
      UNION ALL
      SELECT GoodCode, StoreCode, Amount1, Amount2, 0, 0 FROM GoodStoreStock) AS m
GROUP BY m.GoodCode, m.StoreCode
HAVING SUM(m.Kept1) <> SUM(m.Amount1) OR SUM(m.Kept2) <> SUM(m.Amount2)
GO

SELECT N'stock of a good differs from that of its stores' AS Fault, m.GoodCode, SUM(m.Kept1) AS Kept, SUM(m.Amount1) AS Stores
FROM (SELECT GoodCode, 0 AS Kept1, 0 AS Kept2, Amount1, Amount2 FROM GoodStoreStock
      UNION ALL
      SELECT GoodCode, Amount1, Amount2, 0, 0 FROM GoodStock) AS m
GROUP BY m.GoodCode
HAVING SUM(m.Kept1) <> SUM(m.Amount1) OR SUM(m.Kept2) <> SUM(m.Amount2)
GO

-- Main units: the second amount of a detail is its own, that of the stock may follow from a ratio. What moved without
-- details is left out: a good may have had stock before it got types, and opening stock need not name its details.
SELECT N'detail ledger differs from the stock' AS Fault, m.GoodCode, m.StoreCode, SUM(m.Stock) AS Stock,
       SUM(m.Ledger) AS Ledger
FROM (SELECT k.Kala AS GoodCode, k.Anbar AS StoreCode, k.Amount1 AS Stock, 0 AS Ledger
      FROM Kardex AS k
      WHERE EXISTS (SELECT 1 FROM GoodDetailKardex AS d WHERE d.OperationType = k.OperationType
                    AND d.OperationCode = k.OperationCode AND d.OperationRow = k.OperationRow)
      UNION ALL
      SELECT a.GoodCode, a.StoreCode, a.Amount1, 0
      FROM GoodFirstAsset AS a
      WHERE a.tmp = 0 AND EXISTS (SELECT 1 FROM GoodDetailKardex AS d WHERE d.OperationType = 3
                                  AND d.OperationCode = a.GoodCode AND d.OperationRow = a.Radif)
      UNION ALL
      SELECT GoodCode, StoreCode, 0, Amount1 FROM GoodDetailKardex) AS m
GROUP BY m.GoodCode, m.StoreCode
HAVING SUM(m.Stock) <> SUM(m.Ledger)
GO

-- The row of an opening stock is its Radif, its code that of the good.
SELECT N'details differ from the opening stock' AS Fault, m.GoodCode, m.OperationRow, m.StoreCode, SUM(m.Opening) AS Opening,
       SUM(m.Ledger) AS Ledger
FROM (SELECT GoodCode, Radif AS OperationRow, StoreCode, Amount1 AS Opening, 0 AS Ledger, 0 AS Rows1
      FROM GoodFirstAsset
      WHERE tmp = 0
      UNION ALL
      SELECT OperationCode, OperationRow, StoreCode, 0, Amount1, 1 FROM GoodDetailKardex WHERE OperationType = 3) AS m
GROUP BY m.GoodCode, m.OperationRow, m.StoreCode
HAVING SUM(m.Rows1) > 0 AND SUM(m.Opening) <> SUM(m.Ledger)
GO

SELECT N'less than nothing of a detail' AS Fault, DetailValueID, StoreCode, SUM(Amount1) AS Amount1, SUM(Amount2) AS Amount2,
       SUM(Amount3) AS Amount3
FROM GoodDetailKardex
GROUP BY DetailValueID, StoreCode
HAVING SUM(Amount1) < 0 OR SUM(Amount2) < 0 OR SUM(Amount3) < 0
GO

-- A transfer moves each of its lines twice: out of the line's store under 6, into the second store under 7.
SELECT N'movement differs from the line of its document' AS Fault, m.OperationType, m.OperationCode, m.OperationRow,
       SUM(m.Line1) AS Line, SUM(m.Amount1) AS Movement
FROM (SELECT OperationType, OperationCode, OperationRow, Kala, Anbar, [Date], 0 AS Line1, 0 AS Line2, Amount1, Amount2, 0 AS Lines
      FROM Kardex
      WHERE OperationType IN (1, 2, 4, 5, 6, 7)
      UNION ALL
      SELECT s.OperationType, l.Code, l.OperationRow, l.GoodCode, CASE s.OperationType WHEN 7 THEN d.ToStoreCode ELSE l.StoreCode END,
             d.[Date], s.Direction * l.Amount1, s.Direction * l.Amount2, 0, 0, 1
      FROM DocumentLines AS l
      INNER JOIN Documents AS d ON d.Kind = l.Kind AND d.Code = l.Code
      INNER JOIN (SELECT 1 AS Kind, 1 AS OperationType, 1 AS Direction UNION ALL SELECT 2, 2, -1 UNION ALL SELECT 4, 4, 1
                  UNION ALL SELECT 5, 5, -1 UNION ALL SELECT 6, 6, -1 UNION ALL SELECT 6, 7, 1) AS s ON s.Kind = l.Kind) AS m
GROUP BY m.OperationType, m.OperationCode, m.OperationRow, m.Kala, m.Anbar, m.[Date]
HAVING SUM(m.Line1) <> SUM(m.Amount1) OR SUM(m.Line2) <> SUM(m.Amount2) OR SUM(m.Lines) <> 1
GO

SELECT N'document without lines' AS Fault, d.Kind, d.Code
FROM Documents AS d
WHERE NOT EXISTS (SELECT 1 FROM DocumentLines AS l WHERE l.Kind = d.Kind AND l.Code = d.Code)
GO

-- A line without any details may be older than the types of its good.
SELECT N'details differ from the line of their document' AS Fault, m.OperationType, m.OperationCode, m.OperationRow,
       SUM(m.Movement) AS Movement, SUM(m.Ledger) AS Ledger
FROM (SELECT OperationType, OperationCode, OperationRow, Kala AS GoodCode, Anbar AS StoreCode, Amount1 AS Movement, 0 AS Ledger,
             0 AS Rows1
      FROM Kardex
      WHERE OperationType IN (1, 2, 4, 5, 6, 7)
      UNION ALL
      SELECT OperationType, OperationCode, OperationRow, GoodCode, StoreCode, 0, Amount1, 1
      FROM GoodDetailKardex
      WHERE OperationType IN (1, 2, 4, 5, 6, 7)) AS m
GROUP BY m.OperationType, m.OperationCode, m.OperationRow, m.GoodCode, m.StoreCode
HAVING SUM(m.Rows1) > 0 AND SUM(m.Movement) <> SUM(m.Ledger)
GO

-- Goods whose names of places differ are compared in main units only, as the returns themselves are limited.
SELECT N'more returned than the document moved' AS Fault, m.Kind, m.Code, m.GoodCode, SUM(m.Moved) AS Moved, SUM(m.Returned) AS Returned
FROM (SELECT Kind, Code, GoodCode, Amount1 AS Moved, 0 AS Returned FROM DocumentLines WHERE Kind IN (1, 2)
      UNION ALL
      SELECT CASE d.Kind WHEN 4 THEN 2 ELSE 1 END, d.AnswersCode, l.GoodCode, 0, l.Amount1
      FROM DocumentLines AS l
      INNER JOIN Documents AS d ON d.Kind = l.Kind AND d.Code = l.Code
      WHERE d.Kind IN (4, 5) AND d.AnswersCode <> 0) AS m
GROUP BY m.Kind, m.Code, m.GoodCode
HAVING SUM(m.Returned) > SUM(m.Moved)
GO

SELECT N'ledger row of another good than its detail value' AS Fault, k.ID, k.DetailValueID, k.GoodCode
FROM GoodDetailKardex AS k
LEFT JOIN GoodDetailValues AS v ON v.ID = k.DetailValueID
WHERE v.ID IS NULL OR v.GoodCode <> k.GoodCode
GO

SELECT N'detail value without details' AS Fault, v.ID AS DetailValueID, v.GoodCode
FROM GoodDetailValues AS v
WHERE NOT EXISTS (SELECT 1 FROM GoodDetailValueDetails AS d WHERE d.DetailValueID = v.ID)
  AND NOT EXISTS (SELECT 1 FROM GoodDetailKardex AS k WHERE k.DetailValueID = v.ID)
GO

SELECT N'details without a detail value' AS Fault, d.ID, d.DetailValueID
FROM GoodDetailValueDetails AS d
WHERE NOT EXISTS (SELECT 1 FROM GoodDetailValues AS v WHERE v.ID = d.DetailValueID)
GO

-- A division takes units out under 24 and brings their parts in under 25, row by row the same.
SELECT N'parts of a division differ from what was taken' AS Fault, m.DivisionCode, m.DivisionRow, SUM(m.Amount1) AS Difference
FROM (SELECT DivisionCode, OperationRow AS DivisionRow, -Amount1 AS Amount1 FROM GoodDetailDivisionDetail
      UNION ALL
      SELECT DivisionCode, DivisionRow, Amount1 FROM GoodDetailDivisionDetailItems) AS m
GROUP BY m.DivisionCode, m.DivisionRow
HAVING SUM(m.Amount1) <> 0
GO

-- The second amount counts packages where Amount3 tells what one holds; of others it is divided as the first.
SELECT N'second amounts of a division differ' AS Fault, m.OperationCode, m.DivisionRow, SUM(m.Amount2) AS Difference
FROM (SELECT OperationCode, OperationRow AS DivisionRow, Amount2 FROM GoodDetailKardex WHERE OperationType = 24 AND Amount3 = 0
      UNION ALL
      SELECT k.OperationCode, p.DivisionRow, k.Amount2
      FROM GoodDetailKardex AS k
      INNER JOIN GoodDetailDivisionDetailItems AS p ON p.DivisionCode = k.OperationCode AND p.OperationRow = k.OperationRow
      WHERE k.OperationType = 25 AND k.Amount3 = 0) AS m
GROUP BY m.OperationCode, m.DivisionRow
HAVING SUM(m.Amount2) <> 0
GO

-- Every row and part has its movement and its detail values, and none is without its division.
SELECT N'movements or details differ from their division' AS Fault, m.OperationType, m.OperationCode, m.OperationRow,
       SUM(m.Amount1) AS Division, SUM(m.Moved1) AS Movement, SUM(m.Ledger1) AS Ledger
FROM (SELECT 24 AS OperationType, s.DivisionCode AS OperationCode, s.OperationRow, s.GoodCode, s.StoreCode, h.[Date] AS Day,
             -s.Amount1 AS Amount1, -s.Amount2 AS Amount2, 0 AS Moved1, 0 AS Moved2, 0 AS Ledger1, 1 AS Rows1, 0 AS Moves1,
             0 AS Details1
      FROM GoodDetailDivisionDetail AS s
      INNER JOIN GoodDetailDivision AS h ON h.Code = s.DivisionCode
      UNION ALL
      SELECT 25, p.DivisionCode, p.OperationRow, s.GoodCode, s.StoreCode, h.[Date], p.Amount1, p.Amount2, 0, 0, 0, 1, 0, 0
      FROM GoodDetailDivisionDetailItems AS p
      INNER JOIN GoodDetailDivisionDetail AS s ON s.DivisionCode = p.DivisionCode AND s.OperationRow = p.DivisionRow
      INNER JOIN GoodDetailDivision AS h ON h.Code = p.DivisionCode
      UNION ALL
      SELECT OperationType, OperationCode, OperationRow, Kala, Anbar, [Date], 0, 0, Amount1, Amount2, 0, 0, 1, 0
      FROM Kardex
      WHERE OperationType IN (24, 25)
      UNION ALL
      SELECT k.OperationType, k.OperationCode, k.OperationRow, k.GoodCode, k.StoreCode, h.[Date], 0, 0, 0, 0, k.Amount1, 0, 0, 1
      FROM GoodDetailKardex AS k
      LEFT JOIN GoodDetailDivision AS h ON h.Code = k.OperationCode
      WHERE k.OperationType IN (24, 25)) AS m
GROUP BY m.OperationType, m.OperationCode, m.OperationRow, m.GoodCode, m.StoreCode, m.Day
HAVING SUM(m.Rows1) <> 1 OR SUM(m.Moves1) <> 1 OR SUM(m.Details1) = 0 OR SUM(m.Amount1) <> SUM(m.Moved1)
    OR SUM(m.Amount2) <> SUM(m.Moved2) OR SUM(m.Amount1) <> SUM(m.Ledger1)
GO

SELECT N'division without rows' AS Fault, h.Code
FROM GoodDetailDivision AS h
WHERE NOT EXISTS (SELECT 1 FROM GoodDetailDivisionDetail AS s WHERE s.DivisionCode = h.Code)
GO

SELECT N'automatic storage operation differs from its division' AS Fault, m.OperationType, m.OperationCode, m.OperationRow
FROM (SELECT a.OperationType, a.OperationCode, d.OperationRow, d.GoodCode, d.StoreCode,
             CASE a.OperationType WHEN 24 THEN -d.Amount1 ELSE d.Amount1 END AS Stored, 0 AS Moved
      FROM StorageAutoOperation AS a
      INNER JOIN StorageAutoOperationDetail AS d ON d.OperationID = a.ID
      WHERE a.OperationType IN (24, 25)
      UNION ALL
      SELECT OperationType, OperationCode, OperationRow, Kala, Anbar, 0, Amount1 FROM Kardex WHERE OperationType IN (24, 25)) AS m
GROUP BY m.OperationType, m.OperationCode, m.OperationRow, m.GoodCode, m.StoreCode
HAVING SUM(m.Stored) <> SUM(m.Moved)
GO
