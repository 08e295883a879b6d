/* Las sumas que lleva una empresa frente a un recuento de sus apuntes, en los dos sentidos. */
CREATE TEMP TABLE cuenta AS SELECT count(*) AS n,
  sum(iif(DH='D', coalesce(CAST(round(Importe*1000000) AS INTEGER), 0), 0)) AS d,
  sum(iif(DH='D', 0, coalesce(CAST(round(Importe*1000000) AS INTEGER), 0))) AS h,
  NAsiento, lower(Subcuenta) AS s, CAST(substr(Fecha, 6, 2) AS INTEGER) AS m
FROM Diario GROUP BY NAsiento, s, m;
SELECT 'sumas del diario', *
FROM (SELECT NumeroLineas, SumaDebe, SumaHaber FROM librano_sumas_1
  EXCEPT SELECT sum(n), sum(d), sum(h) FROM cuenta);
SELECT 'sumas por asiento', *
FROM (SELECT NAsiento, NumeroLineas, SumaDebe, SumaHaber FROM librano_sumas_2
  EXCEPT SELECT NAsiento, sum(n), sum(d), sum(h) FROM cuenta GROUP BY NAsiento);
SELECT 'falta asiento', *
FROM (SELECT NAsiento FROM Diario
  EXCEPT SELECT NAsiento FROM librano_sumas_2);
SELECT 'sumas por mes', *
FROM (SELECT lower(Subcuenta), MesFecha, NumeroLineas, SumaDebe, SumaHaber FROM librano_sumas_3
  EXCEPT SELECT s, m, sum(n), sum(d), sum(h) FROM cuenta GROUP BY s, m);
SELECT 'falta mes', *
FROM (SELECT s, m FROM cuenta
  EXCEPT SELECT lower(Subcuenta), MesFecha FROM librano_sumas_3);
SELECT 'contador', NLinDiario FROM Empresa WHERE NLinDiario <= (SELECT max(NLinea) FROM Diario);
