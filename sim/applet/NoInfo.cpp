/// Something to export: what callers look for here is a name that it lacks.
extern "C" int OrvoSimApplet_isBare()
{
    return 1;
}
