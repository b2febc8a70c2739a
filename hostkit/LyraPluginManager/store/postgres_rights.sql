-- Who may do what with the tables of a store on a server, under a role of his own. Run once, by the account that owns the
-- tables, which passes all of it. @schema@ stands for the schema that they are in.
--
-- A user reads what his trees show him, and changes with plain statements what is his or takes a right of his. What
-- reaches further, into numbers that all share, the log of changes or rows of others, is done by functions that run as
-- the owner, look up themselves who asks, and find nothing but the server's own and the store's objects.
--
-- What a policy asks is asked with every statement of every desk, so it is written in the language whose statements are
-- planned once a session.

-- Who asks.

CREATE FUNCTION tarn_is_owner() RETURNS boolean LANGUAGE plpgsql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
BEGIN
  RETURN pg_has_role(session_user, current_user, 'USAGE');
END
$$;

-- No number for a role that is no user's, or no longer.
CREATE FUNCTION tarn_user() RETURNS integer LANGUAGE plpgsql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
BEGIN
  RETURN (SELECT id FROM app_user WHERE role_name = session_user::text);
END
$$;

CREATE FUNCTION tarn_may(the_right integer) RETURNS boolean LANGUAGE plpgsql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
BEGIN
  RETURN tarn_is_owner() OR EXISTS (SELECT 1 FROM user_right WHERE user_id = tarn_user() AND code = the_right);
END
$$;

CREATE FUNCTION tarn_user_name() RETURNS text LANGUAGE plpgsql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
BEGIN
  RETURN (SELECT name FROM app_user WHERE role_name = session_user::text);
END
$$;

CREATE FUNCTION tarn_acts_as(the_user integer) RETURNS boolean LANGUAGE plpgsql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
BEGIN
  RETURN tarn_is_owner() OR coalesce(tarn_user() = the_user, false);
END
$$;

CREATE FUNCTION tarn_require(is_allowed boolean) RETURNS void LANGUAGE plpgsql STABLE
SET search_path = pg_catalog, @schema@, pg_temp AS $$
BEGIN
  IF is_allowed IS NOT TRUE THEN
    RAISE insufficient_privilege USING MESSAGE = 'the plan store does not allow that to this role';
  END IF;
END
$$;

-- What is seen.

-- The public groups that are closed to the user with all that is below them, those that are kept after a deletion too.
CREATE FUNCTION tarn_hidden_groups() RETURNS SETOF integer LANGUAGE plpgsql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
DECLARE
  the_user integer := tarn_user();
  latest integer[];
  hidden integer[];
BEGIN
  IF tarn_may(8) THEN
    RETURN;
  END IF;
  latest := ARRAY(SELECT group_code FROM group_audience GROUP BY group_code HAVING bool_and(user_group_id NOT IN
    (SELECT user_group_id FROM user_group_member WHERE user_id = the_user)));
  hidden := latest;
  WHILE latest <> '{}' LOOP
    latest := ARRAY((SELECT code FROM plan_group WHERE parent_code = ANY (latest)
      UNION SELECT code FROM kept_plan_group WHERE parent_code = ANY (latest)) EXCEPT SELECT unnest(hidden));
    hidden := hidden || latest;
  END LOOP;
  RETURN QUERY SELECT unnest(hidden);
END
$$;

-- The numbers of the cameras in plans that the user sees.
CREATE FUNCTION tarn_shown_cameras() RETURNS integer[] LANGUAGE sql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
  SELECT coalesce(array_agg(DISTINCT number::integer), '{}')
  FROM plan, unnest(string_to_array(cameras, ' ')) AS number
  WHERE tarn_user() IS NOT NULL AND number ~ '^[0-9]{1,9}$' AND CASE family
    WHEN 1 THEN owner_id = (SELECT tarn_user())
    WHEN 0 THEN parent_code NOT IN (SELECT tarn_hidden_groups())
    ELSE true END
$$;

-- The list of cameras as far as this plan names them, if the user sees it.
CREATE FUNCTION tarn_cameras_of(the_plan integer) RETURNS SETOF camera_name LANGUAGE plpgsql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
DECLARE
  target plan;
BEGIN
  SELECT * INTO target FROM plan WHERE code = the_plan;
  IF tarn_is_owner() OR (tarn_user() IS NOT NULL AND CASE target.family WHEN 1 THEN target.owner_id = tarn_user()
    WHEN 0 THEN target.parent_code NOT IN (SELECT tarn_hidden_groups()) ELSE target.family IS NOT NULL END) THEN
    RETURN QUERY SELECT * FROM camera_name WHERE number = ANY (ARRAY(SELECT one::integer
      FROM unnest(string_to_array(target.cameras, ' ')) AS one WHERE one ~ '^[0-9]{1,9}$'));
  END IF;
END
$$;

-- How many plans that the user does not see show one of these cameras: for who takes them away.
CREATE FUNCTION tarn_hidden_plans_showing(the_cameras text) RETURNS integer LANGUAGE sql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
  SELECT count(*)::integer FROM plan WHERE tarn_may(8) AND NOT tarn_is_owner() AND family = 1
    AND owner_id <> (SELECT tarn_user()) AND string_to_array(cameras, ' ') && ARRAY(
      SELECT number::text FROM camera_name WHERE code = ANY (string_to_array(the_cameras, ' ')))
$$;

-- What may be put where.

CREATE FUNCTION tarn_is_place(the_parent integer, the_family integer, the_owner integer) RETURNS boolean
LANGUAGE plpgsql STABLE SECURITY DEFINER SET search_path = pg_catalog, @schema@, pg_temp AS $$
BEGIN
  IF (CASE the_family WHEN 1 THEN tarn_acts_as(the_owner) ELSE the_owner = 0 END) IS NOT TRUE THEN
    RETURN false;
  END IF;
  IF the_parent < 0 THEN
    RETURN (the_family, the_parent) IN ((0, -1), (1, -2), (2, -4));
  END IF;
  RETURN EXISTS (SELECT 1 FROM plan_group WHERE code = the_parent AND family = the_family AND owner_id = the_owner)
    AND the_parent NOT IN (SELECT tarn_hidden_groups());
END
$$;

-- A code that was given out and stands nowhere: the content of a plan that was deleted waits under its old code.
CREATE FUNCTION tarn_is_new_code(the_code integer) RETURNS boolean LANGUAGE plpgsql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
BEGIN
  RETURN the_code > 0 AND the_code <= (SELECT value FROM counter WHERE name = 'code')
    AND NOT EXISTS (SELECT 1 FROM plan_content WHERE code = the_code)
    AND NOT EXISTS (SELECT 1 FROM plan WHERE code = the_code)
    AND NOT EXISTS (SELECT 1 FROM plan_group WHERE code = the_code)
    AND NOT EXISTS (SELECT 1 FROM kept_plan WHERE code = the_code)
    AND NOT EXISTS (SELECT 1 FROM kept_plan_group WHERE code = the_code)
    AND NOT EXISTS (SELECT 1 FROM group_audience WHERE group_code = the_code);
END
$$;

-- A policy cannot compare a row with what becomes of it. Between the families a plan is taken away here and added there;
-- a group of others is moved by no one.
CREATE FUNCTION tarn_check_move() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
BEGIN
  IF NEW.family <> OLD.family THEN
    PERFORM tarn_require((OLD.family = 1 OR tarn_may(7)) AND (NEW.family = 1 OR tarn_may(5)));
  END IF;
  IF TG_TABLE_NAME = 'plan_group' AND NEW.parent_code <> OLD.parent_code THEN
    PERFORM tarn_require(tarn_is_owner() OR OLD.family = 1);
  END IF;
  RETURN NEW;
END
$$;
CREATE TRIGGER plan_move BEFORE UPDATE ON plan FOR EACH ROW EXECUTE FUNCTION tarn_check_move();
CREATE TRIGGER plan_group_move BEFORE UPDATE ON plan_group FOR EACH ROW EXECUTE FUNCTION tarn_check_move();

-- Which cameras a plan names decides which names its user may read, and whose hand it is in is not for him to choose. What
-- the owner's functions write here, for a deletion that is taken back, stood here before.
CREATE FUNCTION tarn_check_plan() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
DECLARE
  named_before text := '';
BEGIN
  IF tarn_is_owner() THEN
    RETURN NEW;
  END IF;
  IF TG_OP = 'UPDATE' THEN
    named_before := OLD.cameras;
    IF NEW.family <> 1 OR (NEW.name, NEW.split_type, NEW.page_count, NEW.auto_run, NEW.begin_time, NEW.end_time,
      NEW.cameras, NEW.revision, NEW.changed_by, NEW.changed_at) IS DISTINCT FROM (OLD.name, OLD.split_type,
      OLD.page_count, OLD.auto_run, OLD.begin_time, OLD.end_time, OLD.cameras, OLD.revision, OLD.changed_by,
      OLD.changed_at) THEN
      PERFORM tarn_require(NEW.changed_by = tarn_user_name());
    END IF;
  ELSE
    SELECT cameras INTO named_before FROM kept_plan WHERE code = NEW.code;
  END IF;
  IF NEW.cameras IS DISTINCT FROM named_before THEN
    PERFORM tarn_require(NOT EXISTS (SELECT one::integer FROM unnest(string_to_array(NEW.cameras, ' ')) AS one
      WHERE one ~ '^[0-9]{1,9}$' AND one <> ALL (string_to_array(coalesce(named_before, ''), ' '))
      EXCEPT SELECT number FROM camera_claim WHERE transaction = txid_current()));
  END IF;
  RETURN NEW;
END
$$;
CREATE TRIGGER plan_checked BEFORE INSERT OR UPDATE ON plan FOR EACH ROW EXECUTE FUNCTION tarn_check_plan();

-- Numbers and the log of changes.

-- What users asked for in transactions that have not ended; what has ended is deleted by the next.
CREATE UNLOGGED TABLE camera_claim (transaction bigint, number integer, PRIMARY KEY (transaction, number));

CREATE FUNCTION tarn_advance(which text, step bigint) RETURNS bigint LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
DECLARE
  now_at bigint;
BEGIN
  PERFORM tarn_require(step BETWEEN 0 AND CASE WHEN tarn_is_owner() THEN 1000000 ELSE 10000 END AND CASE which
    WHEN 'code' THEN tarn_is_owner() OR tarn_user() IS NOT NULL
    WHEN 'camera' THEN tarn_may(8)
    WHEN 'region' THEN tarn_may(8) END);
  UPDATE counter SET value = value + step WHERE name = which RETURNING value INTO now_at;
  PERFORM tarn_require(now_at <= 2147483647);
  RETURN now_at;
END
$$;

-- Of kinds from 5 to 7, limits, cameras and users, only those learn news from who may configure the site; 8 is what
-- opens for whom at the start.
CREATE FUNCTION tarn_log_change(the_origin text, the_kind integer, the_code integer) RETURNS bigint
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog, @schema@, pg_temp AS $$
DECLARE
  newest bigint;
BEGIN
  PERFORM tarn_require(CASE WHEN the_kind IN (1, 2, 3, 4, 8) THEN tarn_is_owner() OR tarn_user() IS NOT NULL
    ELSE tarn_may(8) END);
  UPDATE counter SET value = value + 1 WHERE name = 'seq' RETURNING value INTO newest;
  INSERT INTO change_log (seq, origin, kind, code) VALUES (newest, left(the_origin, 200), the_kind, the_code);
  DELETE FROM change_log WHERE seq <= newest - 10000;
  PERFORM pg_notify('tarn_changes', '');
  RETURN newest;
END
$$;

-- The numbers by which rows of plans name these cameras, [[code, name], ...]: those that they have, or the next. Who asks
-- knows code and name already, so he may write the number into a plan, in the same transaction.
CREATE FUNCTION tarn_camera_numbers(the_cameras text) RETURNS text LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
DECLARE
  codes text[] := ARRAY(SELECT one ->> 0 FROM json_array_elements(the_cameras::json)
    WITH ORDINALITY AS asked (one, place) ORDER BY place);
  names text[] := ARRAY(SELECT one ->> 1 FROM json_array_elements(the_cameras::json)
    WITH ORDINALITY AS asked (one, place) ORDER BY place);
  numbers integer[];
BEGIN
  PERFORM tarn_require(tarn_is_owner() OR tarn_user() IS NOT NULL);
  INSERT INTO camera_name (number, code, name)
  SELECT (SELECT coalesce(max(number), 0) FROM camera_name) + row_number() OVER (ORDER BY min(asked.place)),
    asked.code, asked.name FROM unnest(codes, names) WITH ORDINALITY AS asked (code, name, place)
  WHERE NOT EXISTS (SELECT 1 FROM camera_name known WHERE known.code = asked.code AND known.name = asked.name)
  GROUP BY asked.code, asked.name;
  numbers := ARRAY(SELECT min(known.number) FROM unnest(codes, names) WITH ORDINALITY AS asked (code, name, place)
    JOIN camera_name known ON known.code = asked.code AND known.name = asked.name GROUP BY asked.place
    ORDER BY asked.place);
  DELETE FROM camera_claim WHERE ctid = ANY (ARRAY(SELECT ctid FROM camera_claim
    WHERE transaction <> txid_current() FOR UPDATE SKIP LOCKED));
  INSERT INTO camera_claim (transaction, number) SELECT txid_current(), unnest(numbers) ON CONFLICT DO NOTHING;
  RETURN array_to_string(numbers, ' ');
END
$$;

-- Deletions.

-- By the server's own clock, since those of the desks may be wrong.
ALTER TABLE deletion ADD COLUMN noted_at timestamptz NOT NULL DEFAULT now();

CREATE FUNCTION tarn_groups_below(the_group integer) RETURNS SETOF integer LANGUAGE sql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
  WITH RECURSIVE tree (code) AS (SELECT code FROM plan_group WHERE code = the_group
    UNION SELECT child.code FROM plan_group child JOIN tree ON child.parent_code = tree.code)
  SELECT code FROM tree
$$;

CREATE FUNCTION tarn_is_open_below(the_group integer) RETURNS boolean LANGUAGE sql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
  SELECT NOT EXISTS (SELECT tarn_groups_below(the_group) INTERSECT SELECT tarn_hidden_groups())
$$;

CREATE FUNCTION tarn_may_delete(the_code integer, group_is_meant boolean) RETURNS boolean LANGUAGE plpgsql STABLE
SECURITY DEFINER SET search_path = pg_catalog, @schema@, pg_temp AS $$
DECLARE
  target record;
BEGIN
  IF group_is_meant THEN
    SELECT code AS place, family, owner_id INTO target FROM plan_group WHERE code = the_code;
  ELSE
    SELECT parent_code AS place, family, owner_id INTO target FROM plan WHERE code = the_code;
  END IF;
  IF target.family = 1 THEN
    RETURN tarn_acts_as(target.owner_id);
  END IF;
  RETURN target.place IS NOT NULL AND tarn_may(7) AND target.place NOT IN (SELECT tarn_hidden_groups())
    AND (NOT group_is_meant OR tarn_is_open_below(the_code));
END
$$;

-- Keeps what is about to be deleted; answers how many groups and plans are below a group.
CREATE FUNCTION tarn_keep(the_code integer, group_is_meant boolean, the_user integer, the_time bigint,
                          OUT groups_below integer, OUT plans_below integer)
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog, @schema@, pg_temp AS $$
DECLARE
  tree integer[] := ARRAY(SELECT tarn_groups_below(the_code) WHERE group_is_meant);
BEGIN
  PERFORM tarn_require(tarn_acts_as(the_user) AND tarn_may_delete(the_code, group_is_meant));
  INSERT INTO deletion (code, is_group, parent_code, family, owner_id, name, namesakes, user_id, deleted_at)
  SELECT code, 1, parent_code, family, owner_id, name, (SELECT count(*) FROM plan_group other WHERE
    other.parent_code = target.parent_code AND other.owner_id = target.owner_id AND other.name = target.name) - 1,
    the_user, the_time FROM plan_group target WHERE group_is_meant AND code = the_code
  UNION ALL SELECT code, 0, parent_code, family, owner_id, name, (SELECT count(*) FROM plan other WHERE
    other.parent_code = target.parent_code AND other.owner_id = target.owner_id AND other.name = target.name) - 1,
    the_user, the_time FROM plan target WHERE NOT group_is_meant AND code = the_code;
  INSERT INTO kept_plan (deletion, code, parent_code, family, owner_id, name, split_type, page_count, auto_run,
    begin_time, end_time, cameras, creator, creation_time, revision, changed_by, changed_at, checksum)
  SELECT the_code, code, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time, end_time,
    cameras, creator, creation_time, revision, changed_by, changed_at, checksum
  FROM plan WHERE parent_code = ANY (tree) OR (NOT group_is_meant AND code = the_code);
  GET DIAGNOSTICS plans_below = ROW_COUNT;
  INSERT INTO kept_plan_group (deletion, code, parent_code, family, owner_id, name)
  SELECT the_code, code, parent_code, family, owner_id, name FROM plan_group WHERE code = ANY (tree);
  GET DIAGNOSTICS groups_below = ROW_COUNT;
  groups_below := groups_below - 1;
  INSERT INTO kept_default_view (deletion, user_id, code, type) SELECT the_code, user_id, code, type FROM default_view
  WHERE code = ANY (tree) OR code IN (SELECT code FROM kept_plan WHERE deletion = the_code);
END
$$;

-- Kept and still there it would be in the way of every later deletion.
CREATE FUNCTION tarn_check_deletion() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
BEGIN
  PERFORM tarn_require(NOT EXISTS (SELECT 1 FROM deletion WHERE code = NEW.code
    AND (EXISTS (SELECT 1 FROM plan WHERE code = NEW.code) OR EXISTS (SELECT 1 FROM plan_group WHERE code = NEW.code))));
  RETURN NULL;
END
$$;
CREATE CONSTRAINT TRIGGER deletion_is_whole AFTER INSERT ON deletion DEFERRABLE INITIALLY DEFERRED
FOR EACH ROW EXECUTE FUNCTION tarn_check_deletion();

CREATE FUNCTION tarn_delete(the_code integer, group_is_meant boolean) RETURNS void LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
DECLARE
  tree integer[] := ARRAY(SELECT tarn_groups_below(the_code) WHERE group_is_meant);
BEGIN
  PERFORM tarn_require(tarn_may_delete(the_code, group_is_meant));
  DELETE FROM default_view WHERE code = ANY (tree) OR code IN (SELECT plan.code FROM plan
    WHERE plan.parent_code = ANY (tree) OR (NOT group_is_meant AND plan.code = the_code));
  DELETE FROM plan WHERE parent_code = ANY (tree) OR (NOT group_is_meant AND code = the_code);
  DELETE FROM plan_group WHERE code = ANY (tree);
END
$$;

-- Of all users, or what only others see would be kept for ever.
CREATE FUNCTION tarn_deletions() RETURNS TABLE (code integer, deleted_at bigint) LANGUAGE sql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
  SELECT deletion.code, deletion.deleted_at FROM deletion WHERE tarn_is_owner() OR tarn_user() IS NOT NULL
$$;

-- Where the log of changes has a deletion.
CREATE FUNCTION tarn_deleted_at(the_kind integer, the_code integer) RETURNS bigint LANGUAGE sql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
  SELECT max(seq) FROM change_log WHERE kind = CASE the_kind WHEN 0 THEN 4 ELSE 2 END AND code = the_code
$$;

-- Those that stood beside it and were deleted later may stand beside it again; those of before have counted it.
CREATE FUNCTION tarn_put_back(the_code integer) RETURNS void LANGUAGE plpgsql
SECURITY DEFINER SET search_path = pg_catalog, @schema@, pg_temp AS $$
DECLARE
  target deletion;
BEGIN
  SELECT * INTO target FROM deletion WHERE code = the_code AND deleted_at <> 0;
  PERFORM tarn_require(tarn_acts_as(target.user_id) AND (target.family = 1 OR tarn_may(7))
    AND tarn_is_place(target.parent_code, target.family, target.owner_id));
  IF target.namesakes > (SELECT count(*) FROM (SELECT 0 AS is_group, parent_code, owner_id, name FROM plan
    UNION ALL SELECT 1, parent_code, owner_id, name FROM plan_group) one WHERE one.is_group = target.is_group
    AND one.parent_code = target.parent_code AND one.owner_id = target.owner_id AND one.name = target.name) THEN
    UPDATE deletion SET namesakes = namesakes + 1 WHERE is_group = target.is_group AND owner_id = target.owner_id
      AND parent_code = target.parent_code AND name = target.name
      AND tarn_deleted_at(is_group, code) > tarn_deleted_at(is_group, the_code);
  END IF;
  INSERT INTO plan_group (code, parent_code, family, owner_id, name)
  SELECT code, parent_code, family, owner_id, name FROM kept_plan_group WHERE deletion = the_code;
  INSERT INTO plan (code, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time, end_time,
    cameras, creator, creation_time, revision, changed_by, changed_at, checksum)
  SELECT code, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time, end_time,
    cameras, creator, creation_time, revision, changed_by, changed_at, checksum FROM kept_plan WHERE deletion = the_code;
  INSERT INTO default_view (user_id, code, type) SELECT user_id, code, type FROM kept_default_view
  WHERE deletion = the_code AND user_id NOT IN (SELECT user_id FROM default_view);
  DELETE FROM kept_default_view WHERE deletion = the_code;
  DELETE FROM kept_plan WHERE deletion = the_code;
  DELETE FROM kept_plan_group WHERE deletion = the_code;
  DELETE FROM deletion WHERE code = the_code;
END
$$;

-- Forgets at most so many rows of a deletion. One of others' stays for as long as they can take it back: by the server's
-- clock, whatever the desk's says.
CREATE FUNCTION tarn_forget(the_code integer, most integer) RETURNS void LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
DECLARE
  part integer[];
  rest integer := most;
BEGIN
  PERFORM tarn_require(tarn_is_owner() OR tarn_user() IS NOT NULL);
  IF NOT EXISTS (SELECT 1 FROM deletion WHERE code = the_code
    AND (tarn_acts_as(user_id) OR noted_at < now() - interval '1 minute')) THEN
    RETURN;
  END IF;
  part := ARRAY(SELECT user_id FROM kept_default_view WHERE deletion = the_code ORDER BY user_id LIMIT rest);
  DELETE FROM kept_default_view WHERE deletion = the_code AND user_id = ANY (part);
  rest := rest - cardinality(part);
  part := ARRAY(SELECT code FROM kept_plan WHERE deletion = the_code ORDER BY code LIMIT rest);
  DELETE FROM plan_content WHERE code = ANY (part) AND code NOT IN (SELECT plan.code FROM plan);
  DELETE FROM kept_plan WHERE deletion = the_code AND code = ANY (part);
  rest := rest - cardinality(part);
  part := ARRAY(SELECT code FROM kept_plan_group WHERE deletion = the_code ORDER BY code LIMIT rest);
  DELETE FROM kept_plan_group WHERE deletion = the_code AND code = ANY (part);
  IF rest - cardinality(part) <= 0 THEN
    UPDATE deletion SET deleted_at = 0 WHERE code = the_code;
    RETURN;
  END IF;
  DELETE FROM deletion WHERE code = the_code;
  DELETE FROM group_audience WHERE group_code NOT IN (SELECT code FROM plan_group)
    AND group_code NOT IN (SELECT code FROM kept_plan_group);
END
$$;

-- Of all users, by the server's own clock; answers how many.
CREATE FUNCTION tarn_forget_plays(days integer, most integer) RETURNS integer LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
DECLARE
  forgotten integer;
BEGIN
  PERFORM tarn_require(days >= 90 AND (tarn_is_owner() OR tarn_user() IS NOT NULL));
  DELETE FROM plan_log WHERE ctid = ANY (ARRAY(SELECT ctid FROM plan_log
    WHERE played_at < to_char(now() - make_interval(days => days), 'YYYY-MM-DD HH24:MI:SS') LIMIT most));
  GET DIAGNOSTICS forgotten = ROW_COUNT;
  RETURN forgotten;
END
$$;

-- Who sees no camera any more has it no longer among his favourites.
CREATE FUNCTION tarn_forget_favorites() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
BEGIN
  DELETE FROM favorite_camera WHERE camera_id IN (SELECT id FROM gone);
  RETURN NULL;
END
$$;
CREATE TRIGGER camera_gone AFTER DELETE ON camera REFERENCING OLD TABLE AS gone
FOR EACH STATEMENT EXECUTE FUNCTION tarn_forget_favorites();

-- Sharing: a copy in the recipient's own group of shared plans.

CREATE FUNCTION tarn_may_share_with(the_user integer) RETURNS boolean LANGUAGE sql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
  SELECT tarn_may(5) AND tarn_user() IS DISTINCT FROM the_user AND EXISTS (SELECT 1 FROM app_user WHERE id = the_user)
$$;

CREATE FUNCTION tarn_shared_group(the_user integer) RETURNS integer LANGUAGE plpgsql STABLE SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
BEGIN
  PERFORM tarn_require(tarn_may_share_with(the_user));
  RETURN (SELECT min(code) FROM plan_group WHERE parent_code = -2 AND owner_id = the_user AND name = 'Shared');
END
$$;

CREATE FUNCTION tarn_share_group(the_code integer, the_user integer) RETURNS void LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
BEGIN
  PERFORM tarn_require(tarn_shared_group(the_user) IS NULL AND tarn_is_new_code(the_code));
  INSERT INTO plan_group (code, parent_code, family, owner_id, name) VALUES (the_code, -2, 1, the_user, 'Shared');
END
$$;

CREATE FUNCTION tarn_share_plan(the_code integer, the_user integer, the_name text, the_split integer,
  the_page_count integer, the_begin text, the_end text, the_cameras text, the_creator text, the_moment text,
  the_checksum text, the_pages text, the_thumbnail bytea) RETURNS void LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, @schema@, pg_temp AS $$
DECLARE
  place integer := tarn_shared_group(the_user);
BEGIN
  PERFORM tarn_require(place IS NOT NULL AND tarn_is_new_code(the_code) AND (tarn_is_owner()
    OR the_creator = tarn_user_name()));
  INSERT INTO plan (code, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time, end_time,
    cameras, creator, creation_time, revision, changed_by, changed_at, checksum)
  VALUES (the_code, place, 1, the_user, the_name, the_split, the_page_count, 0, the_begin, the_end,
    the_cameras, the_creator, the_moment, 1, the_creator, the_moment, the_checksum);
  INSERT INTO plan_content (code, pages, thumbnail) VALUES (the_code, the_pages, the_thumbnail);
END
$$;

-- Policies. What is asked of the user stands in a selection of its own, so that it is asked once a statement. That of a
-- change says all by itself: where a statement reads nothing, what may be read is not asked.

CREATE POLICY seen ON plan_group FOR SELECT USING ((SELECT tarn_user()) IS NOT NULL AND CASE family
  WHEN 1 THEN owner_id = (SELECT tarn_user()) WHEN 0 THEN code NOT IN (SELECT tarn_hidden_groups()) ELSE true END);
CREATE POLICY added ON plan_group FOR INSERT WITH CHECK (tarn_is_place(parent_code, family, owner_id)
  AND (family = 1 OR (SELECT tarn_may(5))) AND tarn_is_new_code(code));
CREATE POLICY changed ON plan_group FOR UPDATE USING (CASE family WHEN 1 THEN owner_id = (SELECT tarn_user())
  WHEN 0 THEN (SELECT tarn_may(6)) AND code NOT IN (SELECT tarn_hidden_groups()) ELSE (SELECT tarn_may(6)) END)
  WITH CHECK (tarn_is_place(parent_code, family, owner_id));

CREATE POLICY seen ON plan FOR SELECT USING ((SELECT tarn_user()) IS NOT NULL AND CASE family
  WHEN 1 THEN owner_id = (SELECT tarn_user()) WHEN 0 THEN parent_code NOT IN (SELECT tarn_hidden_groups())
  ELSE true END);
CREATE POLICY added ON plan FOR INSERT WITH CHECK (tarn_is_place(parent_code, family, owner_id)
  AND (family = 1 OR (SELECT tarn_may(5))) AND tarn_is_new_code(code)
  AND creator = (SELECT tarn_user_name()) AND changed_by = creator);
CREATE POLICY changed ON plan FOR UPDATE USING (CASE family WHEN 1 THEN owner_id = (SELECT tarn_user())
  WHEN 0 THEN (SELECT tarn_may(6)) AND parent_code NOT IN (SELECT tarn_hidden_groups()) ELSE (SELECT tarn_may(6)) END)
  WITH CHECK (tarn_is_place(parent_code, family, owner_id));

CREATE POLICY seen ON plan_content FOR SELECT USING (EXISTS (SELECT 1 FROM plan WHERE plan.code = plan_content.code));
CREATE POLICY added ON plan_content FOR INSERT WITH CHECK (EXISTS (SELECT 1 FROM plan
  WHERE plan.code = plan_content.code AND (plan.family = 1 OR (SELECT tarn_may(5)) OR (SELECT tarn_may(6)))));
CREATE POLICY changed ON plan_content FOR UPDATE USING (EXISTS (SELECT 1 FROM plan
  WHERE plan.code = plan_content.code AND (plan.family = 1 OR (SELECT tarn_may(6)))));

CREATE POLICY seen ON deletion FOR SELECT USING ((SELECT tarn_user()) IS NOT NULL AND CASE family
  WHEN 1 THEN owner_id = (SELECT tarn_user())
  WHEN 0 THEN CASE is_group WHEN 0 THEN parent_code ELSE code END NOT IN (SELECT tarn_hidden_groups()) ELSE true END);
CREATE POLICY seen ON kept_plan_group FOR SELECT USING ((SELECT tarn_user()) IS NOT NULL AND CASE family
  WHEN 1 THEN owner_id = (SELECT tarn_user()) WHEN 0 THEN code NOT IN (SELECT tarn_hidden_groups()) ELSE true END);
CREATE POLICY seen ON kept_plan FOR SELECT USING ((SELECT tarn_user()) IS NOT NULL AND CASE family
  WHEN 1 THEN owner_id = (SELECT tarn_user()) WHEN 0 THEN parent_code NOT IN (SELECT tarn_hidden_groups())
  ELSE true END);
CREATE POLICY own ON kept_default_view USING (user_id = (SELECT tarn_user()));

CREATE POLICY own ON default_view USING (user_id = (SELECT tarn_user()));
CREATE POLICY own ON favorite_camera USING (user_id = (SELECT tarn_user()));
CREATE POLICY own ON plan_log USING (user_id = (SELECT tarn_user()));

-- A name that the site has is no secret; another one was written into a plan.
CREATE POLICY seen ON camera_name FOR SELECT USING ((SELECT tarn_user()) IS NOT NULL AND (
  (code, name) IN (SELECT camera.id::text, camera.name FROM camera)
  OR number = ANY ((SELECT tarn_shown_cameras())::integer[])));

-- A desk finds its place in the log by numbers without holes, so all read all of it: it has codes and no names.
CREATE POLICY seen ON counter FOR SELECT USING (true);
CREATE POLICY seen ON change_log FOR SELECT USING (true);

CREATE POLICY seen ON store_info FOR SELECT USING (true);
CREATE POLICY added ON store_info FOR INSERT WITH CHECK (name = 'camera_authority' AND (SELECT tarn_may(8)));
CREATE POLICY changed ON store_info FOR UPDATE USING (name = 'camera_authority' AND (SELECT tarn_may(8)));

DO $$
DECLARE
  one text;
BEGIN
  FOREACH one IN ARRAY ARRAY['app_user', 'user_right', 'user_group', 'user_group_member', 'group_audience',
    'feature_switch', 'region', 'camera', 'camera_preset', 'camera_stream', 'camera_access'] LOOP
    EXECUTE format('CREATE POLICY seen ON %I FOR SELECT USING ((SELECT tarn_user()) IS NOT NULL)', one);
  END LOOP;
  FOREACH one IN ARRAY ARRAY['region', 'camera', 'camera_preset', 'camera_stream', 'camera_access'] LOOP
    EXECUTE format('CREATE POLICY configured ON %I USING ((SELECT tarn_may(8)))', one);
  END LOOP;
  FOREACH one IN ARRAY ARRAY['account', 'app_user', 'camera', 'camera_access', 'camera_claim', 'camera_name',
    'camera_preset', 'camera_stream', 'change_log', 'counter', 'default_view', 'deletion', 'favorite_camera', 'feature_switch',
    'group_audience', 'kept_default_view', 'kept_plan', 'kept_plan_group', 'plan', 'plan_content', 'plan_group',
    'plan_log', 'region', 'store_info', 'user_group', 'user_group_member', 'user_right'] LOOP
    EXECUTE format('ALTER TABLE %I ENABLE ROW LEVEL SECURITY', one);
  END LOOP;
  FOR one IN SELECT oid::regprocedure::text FROM pg_proc
    WHERE pronamespace = '@schema@'::regnamespace AND starts_with(proname, 'tarn_') LOOP
    EXECUTE format('REVOKE ALL ON FUNCTION %s FROM PUBLIC', one);
  END LOOP;
END
$$;
