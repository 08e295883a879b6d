/* The commercial program's books, as it brings them: three articles, two suppliers and a customer. */
CREATE TABLE articulos(Codigo TEXT(15) COLLATE NOCASE PRIMARY KEY, Descripcion TEXT(50) COLLATE NOCASE,
  Comentario TEXT(255), IvaSR INTEGER, IvaCR INTEGER, Costo REAL, MargenPorcentaje REAL,
  MargenImporte REAL, Tipo INTEGER, Proveedor TEXT(10), Foto TEXT(255));
CREATE TABLE proveedores(Codigo TEXT(10) COLLATE NOCASE PRIMARY KEY, Nombre TEXT(50) COLLATE NOCASE);
CREATE TABLE clientes(Codigo TEXT(10) COLLATE NOCASE PRIMARY KEY, Nombre TEXT(50) COLLATE NOCASE);
INSERT INTO proveedores VALUES ('P1', 'Maderas Duero'), ('P2', 'Aceros del Norte');
INSERT INTO clientes VALUES ('C1', 'Bar D''Ors');
INSERT INTO articulos VALUES
  ('0001', 'Tablero de pino', 'Por metros', 3, 7, 12.5, 20, 0, 2, 'P1', NULL),
  ('0002', 'Clavos', NULL, 3, 7, 2, 0, 1.5, 1, 'P2', NULL),
  ('0003', 'Barniz', NULL, 3, 7, 8, 10, 0, 3, 'P1', NULL);
