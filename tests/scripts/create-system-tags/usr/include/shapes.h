void shapes(void);
