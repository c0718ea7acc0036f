# Language libraries for the tests, under language ids that no real translation uses.
kelvo_language(0452 language_partial.rc)
kelvo_language(083C language_hostile.rc)
