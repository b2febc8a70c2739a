-- What the role that all users' roles are in may touch; which rows of it, the policies say. @desk@ stands for the role,
-- @schema@ for the schema of the tables. Run by their owner when the role is made and after each change of the layout.

GRANT USAGE ON SCHEMA @schema@ TO @desk@;
REVOKE CREATE ON SCHEMA @schema@ FROM PUBLIC;

GRANT SELECT ON app_user, camera, camera_access, camera_name, camera_preset, camera_stream, change_log, counter,
  default_view, deletion, favorite_camera, feature_switch, group_audience, kept_default_view, kept_plan,
  kept_plan_group, plan, plan_content, plan_group, plan_log, region, store_info, user_group, user_group_member,
  user_right TO @desk@;

-- Never the code, by which content and default views are found, nor who made a plan.
GRANT INSERT, UPDATE (name, parent_code) ON plan_group TO @desk@;
GRANT INSERT, UPDATE (parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time, end_time,
  cameras, revision, changed_by, changed_at, checksum) ON plan TO @desk@;
GRANT INSERT, UPDATE (pages, thumbnail) ON plan_content TO @desk@;

GRANT INSERT, UPDATE, DELETE ON default_view TO @desk@;
GRANT DELETE ON kept_default_view TO @desk@;
GRANT INSERT, DELETE ON favorite_camera TO @desk@;
GRANT INSERT ON plan_log TO @desk@;

GRANT INSERT, UPDATE, DELETE ON region, camera, camera_preset, camera_stream, camera_access TO @desk@;
GRANT INSERT, UPDATE (value) ON store_info TO @desk@;

GRANT EXECUTE ON FUNCTION tarn_is_owner, tarn_user, tarn_user_name, tarn_may, tarn_hidden_groups, tarn_shown_cameras,
  tarn_cameras_of, tarn_is_place, tarn_is_new_code, tarn_hidden_plans_showing, tarn_advance, tarn_log_change,
  tarn_camera_numbers, tarn_is_open_below, tarn_keep, tarn_delete, tarn_deletions, tarn_put_back, tarn_forget, tarn_forget_plays,
  tarn_shared_group, tarn_share_group, tarn_share_plan TO @desk@;
