PRAGMA journal_mode = WAL;

CREATE TABLE IF NOT EXISTS accounts (
  id INTEGER PRIMARY KEY,
  email TEXT NOT NULL UNIQUE COLLATE NOCASE,
  password_hash TEXT NOT NULL,
  participants TEXT NOT NULL DEFAULT '[]'
);

CREATE TABLE IF NOT EXISTS tokens (
  fingerprint TEXT PRIMARY KEY,
  kind TEXT NOT NULL,
  account INTEGER NOT NULL REFERENCES accounts,
  expires_at INTEGER,
  first_used_at INTEGER
);

CREATE TABLE IF NOT EXISTS notes (
  number INTEGER PRIMARY KEY AUTOINCREMENT,
  id TEXT NOT NULL UNIQUE,
  account INTEGER NOT NULL REFERENCES accounts,
  participant_id TEXT NOT NULL,
  first_name TEXT NOT NULL,
  last_name TEXT NOT NULL,
  input TEXT NOT NULL,
  minutes INTEGER NOT NULL,
  session_date TEXT NOT NULL,
  captured_at INTEGER NOT NULL
);
