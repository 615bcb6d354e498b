void greén(void);
void greés(void);
void greó(void);
void grow(void);
void growü(void);
void grow€(void);
void grow�(void);
void growth(void);
