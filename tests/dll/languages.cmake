# Language libraries for the tests, under language ids that no real translation uses.
kelvo_language(0503 language_partial.rc)
kelvo_language(0504 language_hostile.rc)
