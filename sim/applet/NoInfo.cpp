/// Something to export: what callers look for here is a name that it lacks.
extern "C" int orvo_sim_applet_is_bare()
{
    return 1;
}
