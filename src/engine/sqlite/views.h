// The stored queries as plain views, for any other tool that reads the file.
#pragma once

class FileStore;

// Makes the views of those stored queries that have none and can be resolved by now: a query may be
// stored before one that it rests on, and one that can never be resolved never gets a view.
void makeMissingViews(FileStore& store);
// Drops and makes all of them, after a table or a query that others may rest on has gone.
void remakeViews(FileStore& store);
