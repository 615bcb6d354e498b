void view(void);
