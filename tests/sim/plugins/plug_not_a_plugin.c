/* Test binary: a shared object without any plug-in entry point. */
int plug_not_a_plugin_answer(void) { return 42; }
