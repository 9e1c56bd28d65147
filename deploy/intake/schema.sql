-- What players chose. Everything here can be run again on a database that has it.

-- One row for each player and popup, whatever comes twice.
CREATE TABLE IF NOT EXISTS reports (
  game_id text NOT NULL,
  -- gopenid, or where a game gave none the installation in front of which "install:" stands.
  player text NOT NULL,
  pop_id integer NOT NULL,
  -- When the edge took it, and its number in the stream.
  received timestamptz NOT NULL,
  stream_id text NOT NULL,
  path text NOT NULL,
  install_id text NOT NULL,
  os text NOT NULL,
  version text NOT NULL,
  channel_id bigint NOT NULL,
  scene text NOT NULL,
  action text NOT NULL,
  message text NOT NULL,
  -- The player's claim to be who he says. Whoever grants something verifies it and clears it.
  token text,
  jwt_token text,
  PRIMARY KEY (game_id, player, pop_id)
);

-- What is no report, for a person to look at.
CREATE TABLE IF NOT EXISTS put_aside (
  stream_id text PRIMARY KEY,
  reason text NOT NULL,
  path bytea NOT NULL,
  parameters bytea NOT NULL,
  body bytea NOT NULL,
  since timestamptz NOT NULL DEFAULT now()
);

-- Counted in the transaction that stores, so that it is never more or less than what was stored.
CREATE TABLE IF NOT EXISTS tally (
  what text PRIMARY KEY,
  count bigint NOT NULL
);
INSERT INTO tally VALUES ('stored', 0), ('repeated', 0), ('put_aside', 0) ON CONFLICT DO NOTHING;
