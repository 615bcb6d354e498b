void word_count(void);
