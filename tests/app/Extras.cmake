# Menus, icons, strings and dialogs of the tests' frames.
kelgen_add_resources(test_app "${PROJECT_SOURCE_DIR}/tests/app/App.rc")
kelgen_label_test(app desktop)
